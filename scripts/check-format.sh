#!/bin/sh
# Fails when a C++ source of the tree differs from what clang-format makes
# of it (.clang-format at the top); prints the files that differ.
set -eu
cd "$(dirname "$0")/.."
find . -path ./build -prune -o -path './build-*' -prune -o -path ./.git -prune -o \
    \( -name '*.cpp' -o -name '*.h' \) -print | sort |
    xargs clang-format --dry-run --Werror
