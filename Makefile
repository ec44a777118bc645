# Thin wrapper over CMake: what the README tells a newcomer to type.
BUILD ?= build
JOBS ?= 2
# Optimised, without debug information: the quickest build from scratch. For a debugger,
# make BUILD_TYPE=Debug (in a fresh BUILD folder), or make asan.
BUILD_TYPE ?= Release
CMAKE_FLAGS ?=

.PHONY: all deps build programs test run bench asan tsan fuzz package clang format format-check layers-check clean

all: build

deps:
	scripts/install-deps.sh

$(BUILD)/CMakeCache.txt:
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=$(BUILD_TYPE) $(CMAKE_FLAGS)

build: $(BUILD)/CMakeCache.txt
	cmake --build $(BUILD) -j $(JOBS)

# The two programs alone: no tests, benchmarks or manual pages (what make run needs).
programs: $(BUILD)/CMakeCache.txt
	cmake --build $(BUILD) -j $(JOBS) --target halvard-programs

test: deps build
	ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

# The main job on the bundled samples, with settings kept inside the build folder so a
# first look never touches the user's own settings file.
DEMO = $(BUILD)/app/cli/halvard --config $(BUILD)/demo-settings.ini \
  --stock-dir samples/data --list-dir samples/watchlists

# The desktop program works on a copy of the samples: it writes beside them (the stock database,
# eps.dat, saved scan results), and the source tree stays as it was checked out.
GUI = $(BUILD)/app/gui/halvard-gui
GUI_DEMO = $(BUILD)/demo-samples

# The desktop program when there is a display to show it on (and Qt was found); otherwise the
# command-line demo. Only the program that runs is built.
run: deps $(BUILD)/CMakeCache.txt
	@if [ -n "$$DISPLAY$$WAYLAND_DISPLAY" ] && grep -qiE '^HALVARD_GUI:BOOL=(ON|1|TRUE|YES|Y)$$' $(BUILD)/CMakeCache.txt; then \
	  cmake --build $(BUILD) -j $(JOBS) --target halvard-gui && \
	  echo "== The desktop program on a copy of the bundled samples in $(GUI_DEMO)" && \
	  mkdir -p $(GUI_DEMO) && cp -rn samples/data samples/watchlists $(GUI_DEMO)/ && \
	  $(GUI) --config $(BUILD)/demo-settings.ini \
	    --stock-dir $(GUI_DEMO)/data --list-dir $(GUI_DEMO)/watchlists; \
	else \
	  cmake --build $(BUILD) -j $(JOBS) --target halvard-cli && \
	  echo "== The buy-signal scan of the sample list" && \
	  $(DEMO) scan buy --list sample && \
	  echo "== The live trading report of the sample list" && \
	  $(DEMO) live --list sample --corvane --pyramiding --rs; \
	fi

bench: deps build
	$(BUILD)/bench/halvard-bench

# Tests under AddressSanitizer and UndefinedBehaviorSanitizer, in their own build folder.
asan:
	$(MAKE) test BUILD=build-asan \
	  CMAKE_FLAGS="$(CMAKE_FLAGS) -DHALVARD_SANITIZE=address -DHALVARD_BENCH=OFF -DCMAKE_BUILD_TYPE=Debug"

# The library, the command line and their tests under ThreadSanitizer, in their own build folder,
# at -O1 with line numbers (the quickest build whose reports name the lines). The first data
# race fails the run; tests/tsan.supp lists the false reports from code TSan cannot see, each
# with why (a test run by hand in build-tsan needs TSAN_OPTIONS as below). Without the desktop
# program: Debian's Qt is not built for TSan, which then reports races inside Qt's own thread
# hand-overs (its painter's thread pool, queued events, QThread::wait).
TSAN_RUN_OPTIONS = halt_on_error=1 second_deadlock_stack=1 suppressions=$(CURDIR)/tests/tsan.supp
tsan:
	TSAN_OPTIONS="$(TSAN_RUN_OPTIONS)" $(MAKE) test BUILD=build-tsan \
	  CMAKE_FLAGS="$(CMAKE_FLAGS) -DHALVARD_SANITIZE=thread -DHALVARD_GUI=OFF -DHALVARD_BENCH=OFF \
	  -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_FLAGS_RELWITHDEBINFO='-O1 -g1 -DNDEBUG'"

# The library, the command line and its tests built with Clang in Release (-O3), without the
# desktop program: a second compiler's warnings, at the cost of one more small build.
clang:
	CXX=clang++ cmake -S . -B build-clang -G Ninja -DCMAKE_BUILD_TYPE=Release $(CMAKE_FLAGS) \
	  -DHALVARD_GUI=OFF -DHALVARD_BENCH=OFF -DHALVARD_MAN=OFF
	cmake --build build-clang -j $(JOBS)
	ctest --test-dir build-clang --output-on-failure -j $(JOBS)

# Every parser under libFuzzer (ASan + UBSan) for FUZZ_SECONDS each, from its saved corpus in
# tests/fuzz/corpus; new inputs gather in build-fuzz/corpus, findings in build-fuzz/findings.
# Needs Clang; without it this says so and does nothing.
FUZZ_SECONDS ?= 5
fuzz: deps
	@if ! command -v clang++ >/dev/null; then echo "make fuzz: clang++ is not installed; skipped"; exit 0; fi; \
	CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	  -DHALVARD_FUZZ=ON -DHALVARD_TESTS=OFF -DHALVARD_BENCH=OFF -DHALVARD_GUI=OFF && \
	cmake --build build-fuzz -j $(JOBS) --target halvard-fuzzers && \
	scripts/run-fuzz.sh build-fuzz $(FUZZ_SECONDS)

# The Debian packages (halvard600_VERSION_ARCH.deb and halvard600-gui_VERSION_ARCH.deb in this
# folder): the -O2 build, hardened, stripped, installed under /usr, without tests or benchmarks;
# their contents and lintian's verdict are checked before they are handed over.
package: deps
	scripts/install-deps.sh --package
	cmake -S . -B build-package -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_INSTALL_PREFIX=/usr \
	  -DHALVARD_TESTS=OFF -DHALVARD_BENCH=OFF -DHALVARD_MAN=ON $(CMAKE_FLAGS)
	cmake --build build-package -j $(JOBS)
	rm -f build-package/halvard600*.deb halvard600*.deb
	cd build-package && cpack
	cp build-package/halvard600*.deb .
	scripts/check-package.sh halvard600_*.deb halvard600-gui_*.deb

# Every tracked C++ file through clang-format under the root .clang-format: `format` rewrites
# them, `format-check` (run by CI) names those that differ and fails.
format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

format-check:
	scripts/check-format.sh

# Each folder of the library includes only the floors below it, as src/halvard/floors.txt lists
# them (the table the build links the folders' libraries by); names every include that does not.
layers-check:
	scripts/check-layers.sh

clean:
	rm -rf build build-asan build-tsan build-fuzz build-package build-clang
