# Velmar: the make targets are the interface for people and CI alike.
BUILD      ?= build
BUILD_ASAN ?= build-asan
BUILD_BENCH ?= build-bench
JOBS       ?= $(shell nproc 2>/dev/null || echo 2)
CLI        := $(BUILD)/velmar-cli

.PHONY: all setup build run test test-asan bench format clean

all: build

setup:
	@bash scripts/setup

build: setup
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo
	cmake --build $(BUILD) -j $(JOBS)

run: build
	@echo "== velmar-cli --version"; $(CLI) --version
	@echo; echo "== velmar-cli units"; $(CLI) units
	@echo; echo "== velmar-cli convert 1 Area ft2 mm2"; $(CLI) convert 1 Area ft2 mm2
	@echo; echo "== velmar-cli water --type salt --temperature 10 --units si"; $(CLI) water --type salt --temperature 10 --units si

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

format:
	git ls-files '*.cpp' '*.h' '*.def' | xargs clang-format -i

clean:
	rm -rf $(BUILD) $(BUILD_ASAN) $(BUILD_BENCH)
