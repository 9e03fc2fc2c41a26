#pragma once

// Everything declared under host/ is implemented by the host application and imported by the
// plug-in. The plug-in is compiled with hidden visibility, so the declarations say explicitly that
// these symbols come from outside.
#define HOST_API __attribute__((visibility("default")))
