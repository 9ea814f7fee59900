# The README's commands. Each one installs what it needs first.
MAKEFLAGS += --no-print-directory
BUILD_DIR ?= build
JOBS ?= $(shell nproc)

.PHONY: all setup configure build test test-sanitize run bench bench-build bench-micro fuzz clean

all: build

setup:
	@bash scripts/setup

configure: setup
	@cmake -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null

build: configure
	@cmake --build $(BUILD_DIR) -j $(JOBS)

# Window tests need an X server: without a display the suite runs under Xvfb
# (decided when the recipe runs, after setup has installed it).
CTEST = if [ -z "$$DISPLAY" ] && command -v xvfb-run >/dev/null 2>&1; then \
	  xvfb-run -a -s '-screen 0 1280x1024x24' ctest --output-on-failure -j $(JOBS); \
	else \
	  ctest --output-on-failure -j $(JOBS); \
	fi

test: build
	@cd $(BUILD_DIR) && $(CTEST)

# The whole suite again, built with the address, undefined-behaviour and leak
# sanitizers in its own tree; any report fails the run. Leaks inside the system's
# OpenGL and font libraries are suppressed, never the library's own.
test-sanitize: setup
	@cmake -S . -B $(BUILD_DIR)-sanitize -DCMAKE_BUILD_TYPE=Debug -DNERIO3D_SANITIZE=ON >/dev/null
	@cmake --build $(BUILD_DIR)-sanitize -j $(JOBS)
	@cd $(BUILD_DIR)-sanitize && \
	  export ASAN_OPTIONS=detect_leaks=1:abort_on_error=0 \
	         LSAN_OPTIONS=suppressions=$(CURDIR)/scripts/lsan.supp:print_suppressions=0 \
	         UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 && $(CTEST)

# The viewer on the bundled scene: a window with a display, else a picture.
run: build
	@bash scripts/run-demo $(BUILD_DIR)

# Benchmarks build in their own release tree. make bench prints the table of
# nerio3d against its peer (Coin3D, installed here) on the generated scenes;
# make bench-micro runs the Google benchmark programs.
bench-build: setup
	@bash bench/peer/setup
	@cmake -S . -B $(BUILD_DIR)-bench -DCMAKE_BUILD_TYPE=Release -DNERIO3D_BENCHMARKS=ON -DNERIO3D_TESTS=OFF >/dev/null
	@cmake --build $(BUILD_DIR)-bench -j $(JOBS)

bench: bench-build
	@$(BUILD_DIR)-bench/bench/peer/run-table

bench-micro: bench-build
	@for b in $(BUILD_DIR)-bench/bench/*Bench; do $$b; done

# A fuzzing campaign (FUZZ_SECONDS, 10 minutes by default) against one
# target (FUZZ_TARGET): vlDBFuzz reads scenes from arbitrary bytes,
# vlSceneFuzz also draws, picks, animates, writes and copies what it read.
# Built with clang in its own tree, where each target's corpus grows from the
# sample scenes and failing inputs land (keep each one in
# tests/data/fuzz-regressions/, which the test suite reads). It runs in the
# sample directory so that the textures and inlines that inputs name exist.
FUZZ_SECONDS ?= 600
FUZZ_TARGET ?= vlDBFuzz
FUZZ_DIR = $(abspath $(BUILD_DIR))-fuzz
fuzz:
	@bash scripts/setup clang libclang-rt-14-dev
	@CC=clang CXX=clang++ cmake -S . -B $(FUZZ_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DNERIO3D_FUZZ=ON -DNERIO3D_TESTS=OFF >/dev/null
	@cmake --build $(FUZZ_DIR) -j $(JOBS) --target $(FUZZ_TARGET)
	@mkdir -p $(FUZZ_DIR)/corpus-$(FUZZ_TARGET)
	@cd tests/data && LSAN_OPTIONS=suppressions=$(CURDIR)/scripts/lsan.supp:print_suppressions=0 \
	  $(FUZZ_DIR)/fuzz/$(FUZZ_TARGET) $(FUZZ_DIR)/corpus-$(FUZZ_TARGET) . -artifact_prefix=$(FUZZ_DIR)/ \
	  -dict=$(CURDIR)/fuzz/vrml.dict -max_total_time=$(FUZZ_SECONDS) -timeout=10 -rss_limit_mb=2048 \
	  -max_len=4096 -close_fd_mask=2 -print_final_stats=1

clean:
	@rm -rf $(BUILD_DIR) $(BUILD_DIR)-bench $(BUILD_DIR)-sanitize $(BUILD_DIR)-fuzz
