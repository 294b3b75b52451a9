# Front door over CMake. Every target installs what is missing, configures, builds and goes.

RELEASE := build/release
SANITIZED := build/sanitized
TEST_ENV := LANG=C.UTF-8 QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=detect_leaks=1 \
	LSAN_OPTIONS="suppressions='$(CURDIR)/tests/leaks.supp':print_suppressions=0"

# Of each fuzz target, and of the play at speed.
FUZZ_SECONDS := 60
SOAK_SECONDS := 1200

.PHONY: run test tour pictures bench instructions oracles fuzz soak package \
	test-package test-build setup release sanitized clean

# The demo world and the client connected to it; without a display, the tour.
run: release
	scripts/run $(RELEASE)

# The release build (g++) with all tests, and before it the rule and form tests and a little of each
# fuzz target under sanitizers (clang++). Journeys, sounds and the demo world mostly wait, so four of
# them go at a time; most other tests count as two.
test: sanitized release
	$(TEST_ENV) ctest --test-dir $(SANITIZED) --output-on-failure -j 4
	$(TEST_ENV) ctest --test-dir $(RELEASE) --output-on-failure -j 4

# A first visit on a virtual display: build/tour/index.html with its pictures.
tour: release
	scripts/tour $(RELEASE)

# The manual's pictures anew, in docs/manual.
pictures: release
	scripts/pictures $(RELEASE)

# One table of the modules and of the whole program against their bars, also kept in
# bench/history.md.
bench: release
	scripts/bench $(RELEASE)

# The straightforward walk, trigger loop and box against the client's, on a million random inputs
# each.
oracles: release
	QUILLMERE_RANDOM_INPUTS=1000000 $(RELEASE)/tests/terminal_tests \
		--gtest_filter='*DoesWhatAWalkOneByOneDoesCutAnywhere:Road.*'
	QUILLMERE_RANDOM_INPUTS=1000000 $(RELEASE)/tests/automation_tests \
		--gtest_filter='*AgreesWithThePlainCheck*:RandomTriggers.*'

# Keeps the modules' instruction counts, that the tests hold them to, anew.
instructions: release
	bench/instructions.py $(RELEASE)/bench/instructions --renew

# Each fuzz target for FUZZ_SECONDS, side by side; what they learn is kept in build/corpus.
fuzz: setup
	cmake -S . -B build/fuzz -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo \
		-DQUILLMERE_SANITIZE=ON -DQUILLMERE_PAGE_VIEW=OFF
	cmake --build build/fuzz --target fuzz_targets
	scripts/fuzz build/fuzz/fuzz build/corpus $(FUZZ_SECONDS)

# Debian packages, and an archive that runs from its own folder: build/packages.
package: release
	scripts/package $(RELEASE) build/packages

# The packages on a fresh Debian: installed, played with, removed. Needs root and the network.
test-package: package
	scripts/test-package $(RELEASE) build/packages

# Two builds give the same packages: this one, and one by an account without rights, elsewhere and
# without a network. Of what is committed.
test-build: package
	scripts/test-build build/packages

# A hostile server, then SOAK_SECONDS of play: keys, memory, handles and costs in the long run. To
# be run on a machine that does nothing else.
soak: release
	scripts/soak $(RELEASE) $(SOAK_SECONDS)

release: setup
	cmake -S . -B $(RELEASE) -G Ninja -DCMAKE_CXX_COMPILER=g++ -DCMAKE_BUILD_TYPE=Release
	cmake --build $(RELEASE)

sanitized: setup
	cmake -S . -B $(SANITIZED) -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=Debug \
		-DQUILLMERE_SANITIZE=ON -DQUILLMERE_PAGE_VIEW=OFF
	cmake --build $(SANITIZED)

setup:
	@scripts/setup

clean:
	rm -rf build
