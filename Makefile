# Entry points for people and CI. Every target that builds first makes sure the Debian
# packages it needs are present (scripts/deps.sh is quiet when they are).
PREFIX ?= /usr/local
JOBS ?= $(shell nproc)
BUILD_DIR ?= build
ASAN_DIR ?= build-asan
BENCH_DIR ?= build-bench
WERROR := $(if $(CI),ON,OFF)
CMAKE_COMMON := -G Ninja -DZT_WERROR=$(WERROR)

.PHONY: all deps build run test test-asan bench install format clean

all: build

deps:
	@bash scripts/deps.sh

build: deps
	@cmake -S . -B $(BUILD_DIR) $(CMAKE_COMMON) -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
	@cmake --build $(BUILD_DIR) -j $(JOBS)

run: build
	@bash scripts/run-sample.sh $(BUILD_DIR)/tools/ztc/ztc

test: build
	@cd $(BUILD_DIR) && ctest --output-on-failure -j $(JOBS)

# AddressSanitizer and UndefinedBehaviorSanitizer with clang; the first report stops the run.
test-asan: deps
	@CXX=clang++ cmake -S . -B $(ASAN_DIR) $(CMAKE_COMMON) -DCMAKE_BUILD_TYPE=Debug \
	  -DCMAKE_CXX_FLAGS_DEBUG="-g -O1" -DZT_SANITIZE=ON -DZT_BUILD_TOOLS=OFF >/dev/null
	@cmake --build $(ASAN_DIR) -j $(JOBS)
	@cd $(ASAN_DIR) && ASAN_OPTIONS=halt_on_error=1:detect_leaks=1:abort_on_error=0 \
	  UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 ctest --output-on-failure -j $(JOBS)

bench: deps
	@cmake -S . -B $(BENCH_DIR) $(CMAKE_COMMON) -DCMAKE_BUILD_TYPE=Release -DZT_BUILD_BENCH=ON \
	  -DZT_BUILD_TESTS=OFF >/dev/null
	@cmake --build $(BENCH_DIR) -j $(JOBS) --target bench-all
	@for b in $(BENCH_DIR)/bench/bench_*; do echo "== $$b"; $$b --benchmark_min_time=0.2 || exit 1; done

install: build
	@cmake --install $(BUILD_DIR) --prefix $(PREFIX)

format:
	@git ls-files -co --exclude-standard '*.cpp' '*.h' | xargs -r clang-format -i

clean:
	@rm -rf $(BUILD_DIR) $(ASAN_DIR) $(BENCH_DIR)
