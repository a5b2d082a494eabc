# SPDX-License-Identifier: MIT
BUILD ?= build
CONFIG ?= RelWithDebInfo
WERROR ?= OFF
JOBS ?= $(shell nproc)
CMAKE_FLAGS ?=
# Compiler cache hits across checkouts of the same tree.
export CCACHE_BASEDIR := $(CURDIR)
export CCACHE_NOHASHDIR := 1
export CCACHE_SLOPPINESS := pch_defines,time_macros,include_file_mtime,include_file_ctime

.PHONY: all deps configure build test demo run bench screenshots package fuzz sanitize clean

all: build

deps:
	@scripts/deps.sh

$(BUILD)/build.ninja:
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=$(CONFIG) -DMORVANE_WERROR=$(WERROR) $(CMAKE_FLAGS)

configure: deps $(BUILD)/build.ninja

build: configure
	cmake --build $(BUILD) -j $(JOBS)

test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS) --timeout 300

# The demo set: a base folder and one file of each format from the simulated instrument.
demo: build
	cmake --build $(BUILD) --target demo

# The workstation on the demo QM file, started in the demo base folder where it finds
# Morvane_Files.txt.
EGSE = $(abspath $(BUILD))/src/app/morvane-egse
run: demo
	cd $(BUILD)/demo && $(EGSE) --type QM $(abspath $(BUILD))/demo/demo.qm

# The Debian package of the three programs with their menu entry, icon, metadata, man pages and
# bash completion, in $(BUILD)/ (install it with `apt-get install ./$(BUILD)/morvane-egse_*.deb`).
package: build
	cd $(BUILD) && cpack -G DEB

# Big files come from the simulated instrument (MORVANE_BENCH_BYTES, default 1 GiB), kept in
# MORVANE_BENCH_DIR (default /tmp/morvane-bench) between runs.
bench: build
	@for b in $(BUILD)/bench/*_bench; do echo "$$b"; QT_QPA_PLATFORM=offscreen "$$b" --benchmark_counters_tabular=true || exit 1; done

# PNG of every view on the demo data, for the README.
screenshots: demo
	cd $(BUILD)/demo && QT_QPA_PLATFORM=offscreen $(EGSE) --type QM $(abspath $(BUILD))/demo/demo.qm --screenshots $(CURDIR)/docs

# Coverage-guided fuzzing of every reader, decoder and writer that takes file bytes or text, each
# target for FUZZ_SECONDS (FUZZ_PARALLEL at a time) from its seeds in tests/fuzz/corpus: prints
# each target's executions per second and coverage, and fails on any finding (see docs/testing.md).
FUZZ_SECONDS ?= 60
FUZZ_PARALLEL ?= 1
fuzz: deps
	CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	  -DMORVANE_FUZZ=ON -DMORVANE_GUI=OFF -DMORVANE_TESTS=OFF -DMORVANE_BENCH=OFF
	cmake --build build-fuzz -j $(JOBS)
	FUZZ_PARALLEL=$(FUZZ_PARALLEL) scripts/fuzz.sh build-fuzz $(FUZZ_SECONDS)

# The whole test suite under AddressSanitizer and UndefinedBehaviorSanitizer (CI leaves out the
# windows with SANITIZE_FLAGS=-DMORVANE_GUI=OFF to keep within its time).
SANITIZE_FLAGS ?= -DMORVANE_GUI=ON
SANITIZE_BUILD ?= build-sanitize
sanitize: deps
	cmake -S . -B $(SANITIZE_BUILD) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DMORVANE_SANITIZE=ON -DMORVANE_BENCH=OFF \
	  $(SANITIZE_FLAGS)
	cmake --build $(SANITIZE_BUILD) -j $(JOBS)
	cd $(SANITIZE_BUILD) && QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=detect_leaks=0 \
	  UBSAN_OPTIONS=print_stacktrace=1 ctest --output-on-failure -j $(JOBS) --timeout 600

clean:
	rm -rf $(BUILD) build-fuzz $(SANITIZE_BUILD)
