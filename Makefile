# SPDX-License-Identifier: MIT
BUILD ?= build
CONFIG ?= RelWithDebInfo
WERROR ?= OFF
JOBS ?= $(shell nproc)
CMAKE_FLAGS ?=
# Compiler cache hits across checkouts of the same tree.
export CCACHE_BASEDIR := $(CURDIR)
export CCACHE_NOHASHDIR := 1

.PHONY: all deps configure build test run bench screenshots clean

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

run: build
	$(BUILD)/src/cli/morvane-cli summary data/sample/sample.qm -t QM --base data/sample/base

bench: build
	@echo "benchmarks arrive with the bench/ folder"

screenshots: build
	@echo "screenshots arrive with the workstation"

clean:
	rm -rf $(BUILD)
