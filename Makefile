# The two commands of README.md.
MAKEFLAGS += --no-print-directory
BUILD_DIR ?= build
JOBS ?= $(shell nproc)

.PHONY: run test build deps

deps:
	@scripts/install-deps.sh

build: deps
	@cmake -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
	@cmake --build $(BUILD_DIR) -j $(JOBS)

run: build
	@scripts/run.sh $(BUILD_DIR)

test: build
	@cd $(BUILD_DIR) && ctest --output-on-failure
