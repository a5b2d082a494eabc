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

# What `make run` and `make screenshots` show: the simulator's demo set once this Makefile has
# a `demo` target, else the small sample. The program starts in the base folder, where it
# finds Morvane_Files.txt.
ifneq ($(shell grep -qs '^demo:' $(firstword $(MAKEFILE_LIST)) && echo yes),)
SHOW_DEPS := demo
SHOW_BASE := $(BUILD)/demo
SHOW_FILE := $(BUILD)/demo/demo.qm
else
SHOW_DEPS :=
SHOW_BASE := data/sample/base
SHOW_FILE := data/sample/sample.qm
endif
EGSE = $(abspath $(BUILD))/src/app/morvane-egse

run: build $(SHOW_DEPS)
	cd $(SHOW_BASE) && $(EGSE) --type QM $(abspath $(SHOW_FILE))

bench: build
	@for bench in $(BUILD)/bench/*_bench; do QT_QPA_PLATFORM=offscreen $$bench || exit 1; done

screenshots: build $(SHOW_DEPS)
	cd $(SHOW_BASE) && QT_QPA_PLATFORM=offscreen $(EGSE) --type QM $(abspath $(SHOW_FILE)) --screenshots $(CURDIR)/docs

clean:
	rm -rf $(BUILD)
