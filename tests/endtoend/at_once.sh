#!/usr/bin/env bash
# Runs a test program in several processes at once, each with its share of the tests: they wait for most of their time.
# at_once.sh PROCESSES PROGRAM [ARGUMENT...]
set -muo pipefail # m: what runs in the background hears SIGINT, which a test sends
export GTEST_TOTAL_SHARDS=$1 GTEST_SHARD_INDEX
shift
outputs=$(mktemp -d)
trap 'kill $(jobs -pr) 2>/dev/null; rm -r "$outputs"' EXIT
for ((GTEST_SHARD_INDEX = 0; GTEST_SHARD_INDEX < GTEST_TOTAL_SHARDS; ++GTEST_SHARD_INDEX)); do
    "$@" >"$outputs/$GTEST_SHARD_INDEX" 2>&1 &
done
failed=0
for job in $(jobs -p); do wait "$job" || failed=1; done
cat "$outputs"/*
exit "$failed"
