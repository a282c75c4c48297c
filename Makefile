# The things a person does with Quillon. `make demo` and `make test` are the README's two
# commands: each installs what is missing, builds, and runs.

PRESET ?= default
JOBS ?= $(shell nproc)

.PHONY: deps build demo script-demo test test-sanitize check clean

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

# Everything CI runs: the tests plain and under AddressSanitizer and UBSan.
check: test test-sanitize

clean:
	rm -rf build
