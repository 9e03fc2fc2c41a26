#pragma once

#include <QString>
#include <cstdio>
#include <cstdlib>
#include <string>

// What the fuzz targets share: a broken promise stops the run as a crash, which libFuzzer records
// together with the input that caused it.
namespace lanetap_fuzz {

[[noreturn]] inline void fail(const std::string& what) {
    std::fprintf(stderr, "\nFUZZ CHECK FAILED: %s\n", what.c_str());
    std::fflush(stderr);
    std::abort();
}

inline void check(bool holds, const std::string& what) {
    if (!holds) {
        fail(what);
    }
}

// A text for a failure message, with its line ends and other control characters made visible.
inline std::string shown(const std::string& text) {
    std::string out = "\"";
    for (const unsigned char c : text) {
        if (c == '\n') {
            out += "\\n";
        } else if (c < 0x20 || c == 0x7f) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\x%02x", c);
            out += escaped;
        } else {
            out += static_cast<char>(c);
        }
    }
    return out + "\"";
}

inline std::string shown(const QString& text) {
    return shown(text.toStdString());
}

}  // namespace lanetap_fuzz
