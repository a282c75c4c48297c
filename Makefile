# The things a person does with Quillon. `make demo` and `make test` are the README's two
# commands: each installs what is missing, builds, and runs.

PRESET ?= default
JOBS ?= $(shell nproc)

.PHONY: deps build demo script-demo test test-sanitize fuzz-build fuzz soak check bench clean

deps:
	./scripts/install-deps.sh

build: deps
	cmake --preset $(PRESET)
	cmake --build --preset $(PRESET) -j $(JOBS)

# The main job: the demo trading host, in a window when there is a display, else its headless
# tour (a screenshot of each stage, the printed confirmation and the event log in build/tour).
demo: build
	@if [ -n "$$DISPLAY$$WAYLAND_DISPLAY" ]; then ./build/$(PRESET)/quillon-demo; \
	else ./build/$(PRESET)/quillon-demo --tour build/tour; fi

# The example script played by the headless script host.
script-demo: build
	./build/$(PRESET)/quillon-script --locale de_DE examples/blank-ticket-de.jsonl

test: build
	ctest --preset $(PRESET) -j $(JOBS)

test-sanitize:
	$(MAKE) test PRESET=sanitize

# The fuzz targets and the soak, built with clang under AddressSanitizer and UBSan.
FUZZ_SECONDS ?= 60
SOAK_STEPS ?= 1000000

fuzz-build: deps
	cmake --preset fuzz
	cmake --build --preset fuzz -j $(JOBS)

# Each fuzz target for FUZZ_SECONDS, then a short soak (a few seconds).
fuzz: fuzz-build
	./scripts/run-fuzz.sh $(FUZZ_SECONDS) 20000

# The long run: a million random steps against ticket after ticket, memory bounded. Not in CI.
soak: fuzz-build
	./build/fuzz/fuzz/quillon-soak $(SOAK_STEPS)

# Everything CI runs: the tests plain and under AddressSanitizer and UBSan, and the fuzzers.
check: test test-sanitize fuzz

# The benchmarks of the hot roads: medians of BENCH_REPS runs, then a table of each road against
# its floor and its target. The raw figures go to build/bench.json. Never part of test or check.
BENCH_REPS ?= 5
BENCH_FILTER ?= .
bench: build
	./build/$(PRESET)/bench/quillon-bench --benchmark_filter='$(BENCH_FILTER)' \
	  --benchmark_repetitions=$(BENCH_REPS) --benchmark_report_aggregates_only=true \
	  --benchmark_out=build/bench.json --benchmark_out_format=json

clean:
	rm -rf build
