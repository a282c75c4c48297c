# The things a person does with Quillon. `make demo` and `make test` are the README's two
# commands: each installs what is missing, builds, and runs.

PRESET ?= default
JOBS ?= $(shell nproc)

.PHONY: deps build demo test test-sanitize fuzz-build fuzz soak check clean

deps:
	./scripts/install-deps.sh

build: deps
	cmake --preset $(PRESET)
	cmake --build --preset $(PRESET) -j $(JOBS)

# The main job: the example script played by the headless host.
demo: build
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

clean:
	rm -rf build
