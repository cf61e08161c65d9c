# The two commands a newcomer needs: `make run` and `make test`.
# Each target first installs the Debian packages it is missing (as root,
# through apt-get): building and running need only those of the "build"
# purpose, the tests add theirs (scripts/packages lists them by purpose).
# `make install` puts vornosc under PREFIX, `make uninstall` takes it out again;
# `make package` makes its Debian package.

FUZZ_SECONDS ?= 60
PREFIX ?= /usr/local
EXAMPLE := examples/Demo.VornOsc
VORNOSC := build/default/app/vornosc
PREVIEW := build/preview
# What `make install` put in place; cmake's own list is rewritten by cpack.
INSTALLED := build/default/installed-files.txt

.PHONY: deps configure build configure-tests build-tests run test install uninstall package \
        asan-test fuzz bench screenshot clean

# Every purpose's packages, for a machine that runs every target.
deps:
	scripts/install-deps build install package test bench fuzz screenshot

# The program alone: no GoogleTest, no Benchmark.
configure:
	scripts/install-deps build
	cmake --preset default -DBUILD_TESTING=OFF

build: configure
	cmake --build --preset default

configure-tests:
	scripts/install-deps build test bench
	cmake --preset default -DBUILD_TESTING=ON

build-tests: configure-tests
	cmake --build --preset default

run: build
	scripts/run-editor $(VORNOSC) $(EXAMPLE) $(PREVIEW)

test: build-tests
	ctest --preset default

# The desktop learns of the new file type and menu entry, as Debian's triggers
# make it learn of a package's.
install: build
	scripts/install-deps install
	cmake --install build/default --prefix $(PREFIX)
	cp build/default/install_manifest.txt $(INSTALLED)
	update-mime-database $(PREFIX)/share/mime
	update-desktop-database $(PREFIX)/share/applications

# Removes the files `make install` listed, then the folders of ours it leaves empty.
uninstall:
	scripts/uninstall $(INSTALLED) $(PREFIX)

package: build
	scripts/install-deps package
	cd build/default && cpack -G DEB

asan-test:
	scripts/install-deps build test
	cmake --preset asan
	cmake --build --preset asan
	ctest --preset asan

fuzz:
	scripts/install-deps build fuzz
	cmake --preset fuzz
	cmake --build --preset fuzz
	scripts/run-fuzzers $(FUZZ_SECONDS)

bench: build-tests
	scripts/run-benchmarks

screenshot: build
	scripts/install-deps screenshot
	scripts/take-screenshot $(VORNOSC) $(EXAMPLE) docs/vornosc-editor.png

clean:
	rm -rf build
