# The two commands of README.md.
MAKEFLAGS += --no-print-directory
BUILD_DIR ?= build
JOBS ?= $(shell nproc)

.PHONY: run test build deps bench

deps:
	@scripts/install-deps.sh

build: deps
	@cmake -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
	@cmake --build $(BUILD_DIR) -j $(JOBS)

run: build
	@scripts/run.sh $(BUILD_DIR)

test: build
	@cd $(BUILD_DIR) && ctest --output-on-failure

# Not a test: the service against a minimal FastCGI responder (bench/).
bench: deps
	@cmake -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
	@cmake --build $(BUILD_DIR) -j $(JOBS) --target index.fcgi bmcsim oem_registry \
		event_registry bios_registry floor_responder
	@BMC_BUILD_DIR=$(abspath $(BUILD_DIR)) BMC_SOURCE_DIR=$(CURDIR) /usr/bin/python3 bench/run_bench.py
