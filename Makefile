# LaneTap: `make demo` and `make test` set up a fresh Debian 12 machine, build, and run.

BUILD        ?= build
SANITIZE_BUILD ?= build-sanitize
FUZZ_BUILD   ?= build-fuzz
FUZZ_SECONDS ?= 60
BUILD_TYPE   ?= RelWithDebInfo
DEMO_DESIGN  ?= examples/ddr4_x8_write.json
JOBS         ?= $(shell nproc)

# Debian packages the build and the tests need.
PACKAGES = build-essential cmake ninja-build binutils pkg-config qtbase5-dev qtbase5-dev-tools \
           libqt5opengl5-dev libgtest-dev libgmock-dev locales rapidjson-dev
# A locale with a decimal comma, under which the tests run the program too.
COMMA_LOCALE = de_DE.UTF-8

# What the fuzz targets need on top: clang and its runtimes, libFuzzer among them.
FUZZ_PACKAGES = clang-14 libclang-rt-14-dev
FUZZ_TARGETS  = fuzz_design_loader fuzz_param_text fuzz_voltage_pin fuzz_netlist

SUDO := $(shell [ "$$(id -u)" = 0 ] || echo sudo)

.PHONY: all deps fuzz-deps configure build test demo bench sanitize test-sanitize fuzz format clean

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

# Qt's offscreen platform keeps a few allocations until exit; tests/lsan.supp names them. The
# suppressions used are not listed: the tests count the lines a command writes to stderr.
test-sanitize: sanitize
	cd $(SANITIZE_BUILD) && QT_QPA_PLATFORM=offscreen \
	  LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp:print_suppressions=0 \
	  ctest --output-on-failure -j $(JOBS)

fuzz-deps:
	@$(MAKE) --no-print-directory deps PACKAGES="$(PACKAGES) $(FUZZ_PACKAGES)"

# Each fuzz target runs FUZZ_SECONDS on a scratch copy of its corpus, so the committed seeds stay
# as they are. A crash leaves its input in $(FUZZ_BUILD)/fuzz-run/TARGET/ and fails the target,
# after the other targets have had their run.
fuzz: fuzz-deps
	cmake -S . -B $(FUZZ_BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	  -DCMAKE_CXX_COMPILER=clang++-14 -DLANETAP_FUZZ=ON
	cmake --build $(FUZZ_BUILD) -j $(JOBS) --target $(FUZZ_TARGETS)
	@failed=""; \
	for t in $(FUZZ_TARGETS); do \
	  run=$(FUZZ_BUILD)/fuzz-run/$$t; \
	  rm -rf $$run && mkdir -p $$run/corpus && cp fuzz/corpus/$$t/* $$run/corpus/; \
	  dict=""; [ -f fuzz/$$t.dict ] && dict="-dict=fuzz/$$t.dict"; \
	  echo "== $$t: $(FUZZ_SECONDS) s"; \
	  QT_QPA_PLATFORM=offscreen $(FUZZ_BUILD)/bin/$$t $$run/corpus $$dict \
	    -max_total_time=$(FUZZ_SECONDS) -timeout=30 -print_final_stats=1 \
	    -artifact_prefix=$$run/ 2>$$run/log.txt || failed="$$failed $$t"; \
	  grep -E '^#[0-9]+' $$run/log.txt | tail -n 1; \
	  grep -E '^stat::number_of_executed_units' $$run/log.txt || true; \
	done; \
	if [ -n "$$failed" ]; then \
	  for t in $$failed; do echo "fuzz: $$t failed; see $(FUZZ_BUILD)/fuzz-run/$$t/log.txt"; \
	    tail -n 30 $(FUZZ_BUILD)/fuzz-run/$$t/log.txt; done; \
	  exit 1; \
	fi

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf $(BUILD) $(SANITIZE_BUILD) $(FUZZ_BUILD)
