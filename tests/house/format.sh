#!/bin/bash
# Checks the layout of every C++ source against .clang-format. Run in the project's top folder.
set -u
mapfile -t sources < <(find . -path ./build -prune -o \( -name '*.cpp' -o -name '*.h' \) -print | sort)
if [ ${#sources[@]} -eq 0 ]; then
    echo "No sources were found: is this the project's folder?"
    exit 1
fi
echo "${#sources[@]} sources looked at"
exec clang-format --dry-run --Werror "${sources[@]}"
