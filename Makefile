# The two commands of the README: `make run` and `make test`; `make package`
# and `make install` for an installation.
BUILD ?= build
JOBS ?= 2
CMAKE_FLAGS ?= -DCMAKE_BUILD_TYPE=RelWithDebInfo

.PHONY: deps configure build run display test test-sanitize package test-package install bench clean

deps:
	@sh scripts/install-deps.sh

configure: deps
	@cmake -S . -B $(BUILD) $(CMAKE_FLAGS) >/dev/null

build: configure
	@cmake --build $(BUILD) -j$(JOBS)

# The window needs a graphical session; without one Qt would abort with advice
# about reinstalling, so say what works instead before building anything.
run: display build
	$(BUILD)/app/vantorin

display:
	@if [ -z "$$DISPLAY$$WAYLAND_DISPLAY$$QT_QPA_PLATFORM" ]; then \
		echo "make run: no graphical session (neither DISPLAY nor WAYLAND_DISPLAY is set): use the command line (vantorin --url ADDRESS --dir FOLDER), or make demo" >&2; \
		exit 1; \
	fi

test: build
	ctest --test-dir $(BUILD) --output-on-failure -j$(JOBS)

# The whole test suite under AddressSanitizer (leaks included) and
# UndefinedBehaviorSanitizer, in its own build folder.
SANITIZE_BUILD ?= $(BUILD)-asan
test-sanitize: deps
	@cmake -S . -B $(SANITIZE_BUILD) $(CMAKE_FLAGS) -DVANTORIN_SANITIZE=ON >/dev/null
	@cmake --build $(SANITIZE_BUILD) -j$(JOBS)
	ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 \
	LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp:print_suppressions=0 \
	UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
		ctest --test-dir $(SANITIZE_BUILD) --output-on-failure -j$(JOBS)

# The Debian package, $(BUILD)/vantorin_VERSION_ARCH.deb.
package: build
	@cd $(BUILD) && cpack -G DEB

# The package's validators, and the unpacked program mirroring the demo site
# as an unprivileged user.
test-package: package
	@deb=$$(ls -t $(BUILD)/vantorin_*.deb | head -n 1); \
	sh tests/package/check_package.sh "$$deb"; status=$$?; \
	if [ $$status = 77 ] && [ -z "$${VANTORIN_E2E_REQUIRED:-}" ]; then echo "make test-package: skipped (no private network namespace)"; exit 0; fi; \
	exit $$status

# The same files as the package, under PREFIX.
PREFIX ?= /usr/local
install: build
	cmake --install $(BUILD) --prefix $(PREFIX) --strip

# Mirrors the bundled sample site with the command line, on port 80 of a
# private network namespace; needs no display.
.PHONY: demo
demo: build
	@sh scripts/demo.sh $(BUILD)/app/vantorin

# Rewrites the pictures in docs/ from the real program under a virtual X
# server with a window manager; not part of `make test`.
.PHONY: screenshots
screenshots: build
	@sh scripts/install-deps.sh screenshots
	@sh scripts/screenshots.sh $(BUILD)/app/vantorin docs

bench: deps
	@cmake -S . -B $(BUILD)-bench -DCMAKE_BUILD_TYPE=Release -DVANTORIN_BENCH=ON -DBUILD_TESTING=OFF >/dev/null
	@cmake --build $(BUILD)-bench -j$(JOBS)
	@for b in $(BUILD)-bench/bench/bench_*; do \
		if [ -f "$$b" ] && [ -x "$$b" ]; then "$$b" || exit 1; fi; \
	done
	@sh bench/crawl/run.sh $(BUILD)-bench/app/vantorin
	@sh bench/check/run.sh $(BUILD)-bench/app/vantorin

clean:
	rm -rf $(BUILD) $(BUILD)-bench $(BUILD)-asan
