# LaneTap: `make demo` and `make test` set up a fresh Debian 12 machine, build, and run.

BUILD        ?= build
SANITIZE_BUILD ?= build-sanitize
BUILD_TYPE   ?= RelWithDebInfo
DEMO_DESIGN  ?= examples/ddr4_x8_write.json
JOBS         ?= $(shell nproc)

# Debian packages the build and the tests need.
PACKAGES = build-essential cmake ninja-build binutils pkg-config qtbase5-dev qtbase5-dev-tools \
           libqt5opengl5-dev libgtest-dev libgmock-dev locales
# A locale with a decimal comma, under which the tests run the program too.
COMMA_LOCALE = de_DE.UTF-8

SUDO := $(shell [ "$$(id -u)" = 0 ] || echo sudo)

.PHONY: all deps configure build test demo bench sanitize test-sanitize format clean

all: build

# Installs only what is missing, quietly.
deps:
	@missing=""; \
	for p in $(PACKAGES); do \
	  dpkg-query -W -f='$${Status}' $$p 2>/dev/null | grep -q "install ok installed" || missing="$$missing $$p"; \
	done; \
	if [ -n "$$missing" ]; then \
	  echo "Installing Debian packages:$$missing"; \
	  $(SUDO) apt-get update -qq && \
	  DEBIAN_FRONTEND=noninteractive $(SUDO) apt-get install -y -qq --no-install-recommends $$missing >/dev/null; \
	fi
	@locale -a | grep -qix 'de_DE.utf8' || { \
	  echo "Generating the locale $(COMMA_LOCALE)"; \
	  echo "$(COMMA_LOCALE) UTF-8" | $(SUDO) tee -a /etc/locale.gen >/dev/null && $(SUDO) locale-gen >/dev/null; }

configure: deps
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=$(BUILD_TYPE)

build: configure
	cmake --build $(BUILD) -j $(JOBS)

test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

# The demo builds only what it runs: the program, which brings the plug-in and the stand-in host.
demo: configure
	cmake --build $(BUILD) -j $(JOBS) --target lanetap_app
	$(BUILD)/bin/lanetap netlist $(DEMO_DESIGN) --probe X1

# Timings on a board of 8 channels x 32 memories and on plain designs, with their goals.
bench: configure
	cmake --build $(BUILD) -j $(JOBS) --target lanetap_bench
	$(BUILD)/bin/lanetap_bench

# The whole suite again, built with AddressSanitizer and UndefinedBehaviorSanitizer.
sanitize: deps
	cmake -S . -B $(SANITIZE_BUILD) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DLANETAP_SANITIZE=ON
	cmake --build $(SANITIZE_BUILD) -j $(JOBS)

# Qt's offscreen platform keeps a few allocations until exit; tests/lsan.supp names them.
test-sanitize: sanitize
	cd $(SANITIZE_BUILD) && QT_QPA_PLATFORM=offscreen \
	  LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp ctest --output-on-failure -j $(JOBS)

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf $(BUILD) $(SANITIZE_BUILD)
