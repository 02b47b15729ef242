# The two commands of README.md.
MAKEFLAGS += --no-print-directory
BUILD_DIR ?= build
JOBS ?= $(shell nproc)

.PHONY: run test build configure deps bench

deps:
	@scripts/install-deps.sh

configure: deps
	@cmake -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null

build: configure
	@cmake --build $(BUILD_DIR) -j $(JOBS)

# Only what an instance runs, not the tests.
run: configure
	@cmake --build $(BUILD_DIR) -j $(JOBS) --target bmc_programs
	@scripts/run.sh $(BUILD_DIR)

test: build
	@cd $(BUILD_DIR) && ctest --output-on-failure

# Not a test: the service against a minimal FastCGI responder (bench/).
bench: configure
	@cmake --build $(BUILD_DIR) -j $(JOBS) --target bmc_programs floor_responder reusable_routes
	@BMC_BUILD_DIR=$(abspath $(BUILD_DIR)) BMC_SOURCE_DIR=$(CURDIR) /usr/bin/python3 bench/run_bench.py
