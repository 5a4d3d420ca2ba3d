# A thin front for CMake; see CMakePresets.json.

.PHONY: run test host asan image test-asan bench fuzz lint coverage clean packages

packages:
	@scripts/install-packages

host asan image: packages
	cmake --preset $@ $(QUIET)
	cmake --build --preset $@

# Plays the samples and leaves pictures and records in build/run.
run: host
	build/host/koru play samples/session.json --out build/run

test: image host
	ctest --preset host

test-asan: image asan
	ctest --preset asan

lint: host
	scripts/lint

clean:
	rm -rf build
