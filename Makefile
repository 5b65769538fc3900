# The two front-door commands: `make run` and `make test`. Both install the Debian packages
# the build needs when they are missing (apt-get update once, then install), then build.

BUILD_DIR ?= build
JOBS ?= $(shell nproc 2>/dev/null || echo 2)
CMAKE_FLAGS ?=

DEB_PACKAGES := build-essential cmake pkg-config libgtest-dev libgmock-dev \
    qt6-base-dev qt6-base-dev-tools libgl-dev \
    qemu-utils libvmdk-utils libvirt-clients xvfb xauth fonts-dejavu-core

.PHONY: all deps configure build run test bench screenshots clean

all: build

deps:
	@missing=""; for p in $(DEB_PACKAGES); do \
	    dpkg-query -W -f='$${Status}' $$p 2>/dev/null | grep -q "install ok installed" || missing="$$missing $$p"; \
	done; \
	if [ -n "$$missing" ]; then \
	    echo "Installing:$$missing"; \
	    SUDO=""; [ "$$(id -u)" -eq 0 ] || SUDO=sudo; \
	    $$SUDO apt-get update && DEBIAN_FRONTEND=noninteractive $$SUDO apt-get install -y $$missing; \
	fi

$(BUILD_DIR)/CMakeCache.txt:
	cmake -S . -B $(BUILD_DIR) $(CMAKE_FLAGS)

configure: deps $(BUILD_DIR)/CMakeCache.txt

build: configure
	cmake --build $(BUILD_DIR) -j $(JOBS)

# Starts the desktop program; without a display it runs under a virtual X server.
run: build
	@if [ -x $(BUILD_DIR)/src/app/arden-forge ]; then \
	    if [ -n "$$DISPLAY$$WAYLAND_DISPLAY" ]; then $(BUILD_DIR)/src/app/arden-forge $(ARGS); \
	    else echo "No display found: starting Arden Forge under xvfb-run."; xvfb-run -a $(BUILD_DIR)/src/app/arden-forge $(ARGS); fi; \
	else $(BUILD_DIR)/src/cli/arden-forge-cli help; fi

test: build
	cd $(BUILD_DIR) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS) -LE bench

bench: build
	cd $(BUILD_DIR) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -L bench -V

# Renders the windows to docs/screenshots at 1x and 2x scale (offscreen).
screenshots: build
	QT_QPA_PLATFORM=offscreen $(BUILD_DIR)/tests/gui/screenshots/arden_screenshots docs/screenshots
	QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=2 $(BUILD_DIR)/tests/gui/screenshots/arden_screenshots docs/screenshots @2x

clean:
	rm -rf $(BUILD_DIR)
