#!/bin/bash
# Runs cppcheck over the rooms named. Run in the project's top folder, with the build folder in ZANTO_BUILD,
# where what it found about unchanged files is kept.
set -u
mkdir -p "$ZANTO_BUILD/cppcheck"
exec cppcheck --std=c++17 --language=c++ --quiet --error-exitcode=1 --inline-suppr \
    --enable=warning,performance,portability --suppress=missingIncludeSystem --suppress=normalCheckLevelMaxBranches \
    --suppressions-list=tests/house/cppcheck-suppressions.txt \
    --cppcheck-build-dir="$ZANTO_BUILD/cppcheck" -DGL_GLEXT_PROTOTYPES -I . "$@"
