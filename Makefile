# Velmar: the make targets are the interface for people and CI alike.
BUILD      ?= build
BUILD_ASAN ?= build-asan
BUILD_BENCH ?= build-bench
BUILD_FUZZ ?= build-fuzz
FUZZ_SECONDS ?= 60
JOBS       ?= $(shell nproc 2>/dev/null || echo 2)
CLI        := $(BUILD)/velmar-cli

.PHONY: all setup build run test test-asan bench fuzz format clean

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
	ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 ctest --test-dir $(BUILD_ASAN) --output-on-failure -j $(JOBS)

bench: setup
	cmake -S . -B $(BUILD_BENCH) -DCMAKE_BUILD_TYPE=Release -DVELMAR_TESTS=OFF -DVELMAR_BENCH=ON
	cmake --build $(BUILD_BENCH) -j $(JOBS)
	$(BUILD_BENCH)/velmar-bench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true

# The engine built by clang with the fuzzer's coverage and the sanitizers; each target in
# fuzz/ linked against it and run for FUZZ_SECONDS, seeded with the example projects and the
# damaged-file corpus. New inputs go to $(BUILD_FUZZ)/corpus-<target>, crashes to
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
	    -artifact_prefix=$(BUILD_FUZZ)/crash-$$t- $(BUILD_FUZZ)/corpus-$$t examples tests/data/corrupt; \
	done

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i  # .def tables keep their one-row-per-field layout

clean:
	rm -rf $(BUILD) $(BUILD_ASAN) $(BUILD_BENCH) $(BUILD_FUZZ)
