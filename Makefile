# The two commands of README.md.
MAKEFLAGS += --no-print-directory
BUILD_DIR ?= build
JOBS ?= $(shell nproc)

ARMHF_BUILD_DIR ?= build-armhf

# A new build directory is made for Ninja, which compiles a target's files
# while the libraries it links are still being built; one made before keeps
# its generator.
generator = $(if $(wildcard $(1)/CMakeCache.txt),,-G Ninja)

.PHONY: run test build configure deps bench test-armhf

deps:
	@scripts/install-deps.sh

configure: deps
	@cmake -S . -B $(BUILD_DIR) $(call generator,$(BUILD_DIR)) -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null

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

# The whole product cross-built for the BMC's 32-bit ARM, its unit and
# end-to-end tests run under qemu-user (the sysroot is made once, in the
# build directory).
test-armhf:
	@scripts/install-deps.sh armhf
	@scripts/enable-arm-emulation.sh
	@scripts/make-armhf-sysroot.sh $(abspath $(ARMHF_BUILD_DIR))/sysroot
	@cmake -S . -B $(ARMHF_BUILD_DIR) $(call generator,$(ARMHF_BUILD_DIR)) -DCMAKE_BUILD_TYPE=RelWithDebInfo \
		-DCMAKE_TOOLCHAIN_FILE=$(CURDIR)/cmake/armhf-toolchain.cmake \
		-DBMC_ARMHF_SYSROOT=$(abspath $(ARMHF_BUILD_DIR))/sysroot >/dev/null
	@cmake --build $(ARMHF_BUILD_DIR) -j $(JOBS)
	@cd $(ARMHF_BUILD_DIR) && ctest --output-on-failure -R '^(unit|end_to_end)$$'
