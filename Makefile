# The two commands a newcomer needs: `make run` and `make test`.
# Both install missing Debian packages first (as root, through apt-get).
# `make install` puts vornosc under PREFIX; `make package` makes its Debian package.

FUZZ_SECONDS ?= 60
PREFIX ?= /usr/local
EXAMPLE := examples/Demo.VornOsc
VORNOSC := build/default/app/vornosc
PREVIEW := build/preview

.PHONY: deps configure build run test install package asan-test fuzz bench clean

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

# The desktop learns of the new file type and menu entry, as Debian's triggers
# make it learn of a package's.
install: build
	cmake --install build/default --prefix $(PREFIX)
	update-mime-database $(PREFIX)/share/mime
	update-desktop-database $(PREFIX)/share/applications

package: build
	cd build/default && cpack -G DEB

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
