#!/usr/bin/env bash
# Builds the benchmarks in the release preset and runs them on a virtual screen.
set -euo pipefail

cd "$(dirname "$0")/.."
cmake --preset release
cmake --build --preset release --target kytstudio_bench i3d_bench
tests/on_screen build/release/bench/kytstudio_bench
tests/on_screen build/release/bench/i3d_bench
