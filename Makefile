# The two commands of the README: `make run` and `make test`.
BUILD ?= build
JOBS ?= 2
CMAKE_FLAGS ?= -DCMAKE_BUILD_TYPE=RelWithDebInfo

.PHONY: deps configure build run test bench clean

deps:
	@sh scripts/install-deps.sh

configure: deps
	@cmake -S . -B $(BUILD) $(CMAKE_FLAGS) >/dev/null

build: configure
	@cmake --build $(BUILD) -j$(JOBS)

run: build
	$(BUILD)/app/vantorin

test: build
	ctest --test-dir $(BUILD) --output-on-failure -j$(JOBS)

bench: deps
	@cmake -S . -B $(BUILD)-bench -DCMAKE_BUILD_TYPE=Release -DVANTORIN_BENCH=ON -DBUILD_TESTING=OFF >/dev/null
	@cmake --build $(BUILD)-bench -j$(JOBS)
	@for b in $(BUILD)-bench/bench/bench_*; do [ -x "$$b" ] && "$$b"; done

clean:
	rm -rf $(BUILD) $(BUILD)-bench
