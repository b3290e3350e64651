# The front door: each target calls CMake or a script.
PREFIX ?= /usr/local

.PHONY: run test test-release bench fuzz pictures format apidoc deb dist install clean

run:      ## build the editor and start it on the sample scenes
	scripts/run
test:     ## all tests, with sanitizers; the format and the order of the folders
	scripts/test
test-release: ## the tests of the programs once more, on optimised ones
	scripts/test checked
bench:    ## measure it
	scripts/install-packages build run test bench
	cmake --preset checked && cmake --build --preset checked --target bench
fuzz:     ## feed it broken files, random gestures and kills for a while
	scripts/fuzz
pictures: ## take the guide's pictures of the window and the dialogs anew
	scripts/install-packages build run test
	cmake --preset release -DQUIL_TESTS=ON
	cmake --build --preset release --target docpictures make_samples
	build/release/samples/make_samples build/release/scenes
	build/release/samples/make_samples --objects 8300 build/release/scenes
	build/release/tests/support/docpictures build/release/scenes docs/pictures
format:   ## format every C++ file
	scripts/install-packages test
	scripts/check-format --fix
apidoc:   ## pages of the library's headers, in build/release/apidoc
	scripts/install-packages build test
	cmake --preset release && cmake --build --preset release --target apidoc
deb:      ## Debian packages in build/release/packages, tried in a bare Debian 12
	scripts/install-packages build package
	cmake --preset release && cmake --build --preset release && scripts/check-packages build/release
dist:     ## build/quileditor-VERSION.tar.gz of what is committed
	scripts/dist
install:  ## install the programs below PREFIX (default /usr/local)
	scripts/install-packages build run
	cmake --preset release && cmake --build --preset release && cmake --install build/release --prefix "$(PREFIX)"
clean:    ## remove everything that was built
	rm -rf build samples/scenes
