# The two commands a newcomer needs: `make run` and `make test`.
# Both install missing Debian packages first (as root, through apt-get).

FUZZ_SECONDS ?= 60
EXAMPLE := examples/Demo.VornOsc
VORNOSC := build/default/app/vornosc
PREVIEW := build/preview

.PHONY: deps configure build run test asan-test fuzz bench clean

deps:
	scripts/install-deps

configure: deps
	cmake --preset default

build: configure
	cmake --build --preset default

run: build
	scripts/run-editor $(VORNOSC) $(EXAMPLE) $(PREVIEW)

test: build
	ctest --preset default

asan-test: deps
	cmake --preset asan
	cmake --build --preset asan
	ctest --preset asan

fuzz: deps
	cmake --preset fuzz
	cmake --build --preset fuzz
	scripts/run-fuzzers $(FUZZ_SECONDS)

bench: build
	scripts/run-benchmarks

clean:
	rm -rf build
