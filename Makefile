# Velmar: the make targets are the interface for people and CI alike.
BUILD      ?= build
BUILD_ASAN ?= build-asan
BUILD_TSAN ?= build-tsan
BUILD_BENCH ?= build-bench
BUILD_FUZZ ?= build-fuzz
FUZZ_SECONDS ?= 60
JOBS       ?= $(shell nproc 2>/dev/null || echo 2)
CLI        := $(BUILD)/velmar-cli

.PHONY: all setup build run test test-asan test-tsan bench fuzz format clean gallery gui screenshots

all: build

setup:
	@bash scripts/setup

build: setup
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo
	cmake --build $(BUILD) -j $(JOBS)

run: build
	@echo "== velmar-cli info examples/cargo_ship_si.vxvl"; $(CLI) info examples/cargo_ship_si.vxvl
	@echo; echo "== velmar-cli calc examples/cargo_ship_si.vxvl"; $(CLI) calc examples/cargo_ship_si.vxvl
	@echo; echo "== velmar-cli calc examples/cargo_ship_si.vxvl --mode propulsion"; \
	  $(CLI) calc examples/cargo_ship_si.vxvl --mode propulsion

test: build
	ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

test-asan: setup
	cmake -S . -B $(BUILD_ASAN) -DCMAKE_BUILD_TYPE=Debug -DVELMAR_SANITIZE=ON
	cmake --build $(BUILD_ASAN) -j $(JOBS)
	ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 LSAN_OPTIONS=suppressions=$(abspath tests/lsan.supp) ctest --test-dir $(BUILD_ASAN) --output-on-failure -j $(JOBS)

# The engine under ThreadSanitizer: the tests that calculate projects in parallel threads
# (one project per thread) must show no data race.
# The emergency save of a crash allocates inside its signal handler on purpose (a last try to
# keep the user's work), so signal-unsafe calls are not reported; the window tests are not built.
test-tsan: setup
	cmake -S . -B $(BUILD_TSAN) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVELMAR_TSAN=ON
	cmake --build $(BUILD_TSAN) -j $(JOBS) --target velmar-tests
	TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1 report_signal_unsafe=0" ctest --test-dir $(BUILD_TSAN) --output-on-failure -j $(JOBS) -E "^ui(-.*)?$$"

bench: setup
	cmake -S . -B $(BUILD_BENCH) -DCMAKE_BUILD_TYPE=Release -DVELMAR_TESTS=OFF -DVELMAR_BENCH=ON
	cmake --build $(BUILD_BENCH) -j $(JOBS)
	$(BUILD_BENCH)/velmar-bench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true

# The engine built by clang with the fuzzer's coverage and the sanitizers; each target in
# fuzz/ linked against it and run for FUZZ_SECONDS, seeded with the example projects and the
# damaged-file corpus and the legacy files. New inputs go to $(BUILD_FUZZ)/corpus-<target>, crashes to
# $(BUILD_FUZZ)/crash-<target>-*.
FUZZ_FLAGS := -g -O1 -fno-omit-frame-pointer -fsanitize=address,undefined -fno-sanitize-recover=undefined
fuzz:
	@bash scripts/setup --fuzz
	cmake -S . -B $(BUILD_FUZZ) -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=clang++ -DVELMAR_TESTS=OFF \
	  -DVELMAR_WERROR=OFF -DCMAKE_CXX_FLAGS="$(FUZZ_FLAGS) -fsanitize=fuzzer-no-link"
	cmake --build $(BUILD_FUZZ) -j $(JOBS) --target velmar
	@set -e; for src in fuzz/*.cpp; do \
	  t=$$(basename $$src .cpp); \
	  echo "== $$t"; \
	  clang++ -std=c++20 $(FUZZ_FLAGS) -fsanitize=fuzzer -Isrc -I$(BUILD_FUZZ)/generated $$src \
	    $(BUILD_FUZZ)/libvelmar.a -o $(BUILD_FUZZ)/$$t; \
	  mkdir -p $(BUILD_FUZZ)/corpus-$$t; \
	  $(BUILD_FUZZ)/$$t -max_total_time=$(FUZZ_SECONDS) -timeout=20 -rss_limit_mb=4096 \
	    -artifact_prefix=$(BUILD_FUZZ)/crash-$$t- $(BUILD_FUZZ)/corpus-$$t examples tests/data/corrupt tests/data/legacy; \
	done

# docs/gallery: one PNG of each preset of the cargo ship, drawn by velmar-cli graph.
GALLERY_PRESETS := SPEED:RBARE SPEED:RTOTAL SPEED:PETOTAL "[Confidence: RBARE]" "[ITTC-78 coefs]" \
  SPEED:EFFO SPEED:PSPROP SPEED:PBPROP SPEED:RPMENG "[Engine load]" "[Towpull]" "[Confidence: PBTOTAL]" \
  "[Confidence: EFFO]" "[Propeller coefs]" "[Pitch map]"
gallery: build
	@mkdir -p docs/gallery
	@set -e; for p in $(GALLERY_PRESETS); do \
	  f=docs/gallery/$$(echo "$$p" | tr 'A-Z' 'a-z' | sed -e 's/[^a-z0-9]\{1,\}/-/g' -e 's/^-//' -e 's/-$$//').png; \
	  echo "== $$p -> $$f"; \
	  QT_QPA_PLATFORM=offscreen $(CLI) graph examples/cargo_ship_si.vxvl --preset "$$p" --size 900x600 -o $$f; \
	done
	@# One PDF of each report kind, with a fixed date and time in their heading.
	@set -e; for k in resistance full-resistance full-propulsion data; do \
	  echo "== report $$k -> docs/gallery/cargo_ship_$$k.pdf"; \
	  QT_QPA_PLATFORM=offscreen $(CLI) report examples/cargo_ship_si.vxvl --kind $$k --symbols \
	    --date "2026-01-01 12:00" -o docs/gallery/cargo_ship_$$k.pdf; \
	done
	@# The propeller of the cargo ship exported to IGES and drawn from the written file.
	@echo "== propeller IGES -> docs/gallery/propeller-iges.png"
	@$(CLI) export-iges examples/cargo_ship_si.vxvl -o $(BUILD)/propeller.igs
	@scripts/render-propeller-iges $(BUILD)/propeller.igs docs/gallery/propeller-iges.png

# The window program on the bundled example.
gui: build
	$(BUILD)/velmar examples/cargo_ship_si.vxvl

# docs/screenshots: the main window in both modes with the cargo ship, and every entry table,
# from a real run without a display (settings and logs kept out of the user's home).
screenshots: build
	QT_QPA_PLATFORM=offscreen XDG_CONFIG_HOME=$(abspath $(BUILD))/screenshot-home/config \
	  XDG_DATA_HOME=$(abspath $(BUILD))/screenshot-home/data VELMAR_TRACKER_DIR=$(abspath $(BUILD))/screenshot-home/tracker \
	  $(BUILD)/velmar --screenshots docs/screenshots examples/cargo_ship_si.vxvl

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i  # .def tables keep their one-row-per-field layout

clean:
	rm -rf $(BUILD) $(BUILD_ASAN) $(BUILD_TSAN) $(BUILD_BENCH) $(BUILD_FUZZ)
