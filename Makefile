# A thin front for CMake; see CMakePresets.json.

.PHONY: run test host asan image test-asan bench fuzz lint coverage nightly clean packages package

# Plays the samples and leaves pictures and records in build/run.
run: host
	build/host/koru play samples/session.json --out build/run

test: image host
	ctest --preset host

packages:
	@scripts/install-packages

host asan image: packages
	cmake --preset $@ --log-level=WARNING
	cmake --build --preset $@

test-asan: image asan
	ctest --preset asan

bench: packages
	cmake --preset host --log-level=WARNING
	cmake --build --preset host --target koru_bench
	build/host/koru_bench

fuzz: packages
	scripts/fuzz

lint: host
	scripts/lint

coverage: image
	scripts/coverage

nightly: image host
	scripts/nightly

# build/koru-VERSION.zip, for Windows.
package: image
	rm -f build/koru-*.zip
	scripts/package
	scripts/check-package build/koru-*.zip

clean:
	rm -rf build
