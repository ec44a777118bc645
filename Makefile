# Thin wrapper over CMake: what the README tells a newcomer to type.
BUILD ?= build
JOBS ?= 2
CMAKE_FLAGS ?=

.PHONY: all deps build test run bench asan clean

all: build

deps:
	scripts/install-deps.sh

$(BUILD)/CMakeCache.txt:
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_FLAGS)

build: $(BUILD)/CMakeCache.txt
	cmake --build $(BUILD) -j $(JOBS)

test: deps build
	ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

# The main job on the bundled samples, with settings kept inside the build folder so a
# first look never touches the user's own settings file.
DEMO = $(BUILD)/app/cli/halvard --config $(BUILD)/demo-settings.ini \
  --stock-dir samples/data --list-dir samples/watchlists

run: deps build
	@echo "== The buy-signal scan of the sample list"
	$(DEMO) scan buy --list sample
	@echo "== The live trading report of the sample list"
	$(DEMO) live --list sample --corvane --pyramiding --rs

bench: deps build
	$(BUILD)/bench/halvard-bench

# Tests under AddressSanitizer and UndefinedBehaviorSanitizer, in their own build folder.
asan:
	$(MAKE) test BUILD=build-asan CMAKE_FLAGS="-DHALVARD_SANITIZE=ON -DHALVARD_BENCH=OFF -DCMAKE_BUILD_TYPE=Debug"

clean:
	rm -rf build build-asan
