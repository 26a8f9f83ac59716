#!/bin/bash
# Checks all shell scripts with shellcheck, and that every Python file compiles. Run in the project's top folder.
# Usage: scripts.sh PYTHON
set -u
mapfile -t files < <(find . -path ./build -prune -o -path ./.git -prune -o -type f -print | sort)
mapfile -t shell_scripts < <(awk 'FNR == 1 && /^#(! ?(\/usr\/bin\/env |\/bin\/)(ba)?sh| shellcheck shell=)/ { print FILENAME }
    { nextfile }' "${files[@]}")
mapfile -t python_files < <(printf '%s\n' "${files[@]}" | grep '\.py$')
if [ ${#shell_scripts[@]} -eq 0 ] || [ ${#python_files[@]} -eq 0 ]; then
    echo "No scripts were found: is this the project's folder?"
    exit 1
fi
echo "${#shell_scripts[@]} shell scripts and ${#python_files[@]} Python files"
status=0
shellcheck --external-sources --source-path=SCRIPTDIR/../..:. "${shell_scripts[@]}" || status=1
"$1" -c 'import ast, sys; [ast.parse(open(name, "rb").read(), name) for name in sys.argv[1:]]' "${python_files[@]}" ||
    status=1
exit $status
