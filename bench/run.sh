#!/usr/bin/env bash
# Builds the benchmark in the release preset and runs it on a virtual screen.
set -euo pipefail

cd "$(dirname "$0")/.."
cmake --preset release
cmake --build --preset release --target kytstudio_bench
exec tests/on_screen build/release/bench/kytstudio_bench
