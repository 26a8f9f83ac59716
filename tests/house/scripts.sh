#!/bin/bash
# Checks all shell scripts with bash's own parser and shellcheck, and that every Python file compiles.
# Run in the project's top folder. Usage: scripts.sh PYTHON
set -u
python=$1
status=0

mapfile -t shell_scripts < <(find . -path ./build -prune -o -path ./.git -prune -o -type f -print |
    while read -r file; do
        [[ $file == *.sh ]] || head -c 64 "$file" | head -n 1 | grep -qaE '^#! ?(/usr/bin/env |/bin/)(ba)?sh' &&
            echo "$file"
    done | sort)
mapfile -t python_files < <(find . -path ./build -prune -o -name '*.py' -print | sort)
if [ ${#shell_scripts[@]} -eq 0 ] || [ ${#python_files[@]} -eq 0 ]; then
    echo "No scripts were found: is this the project's folder?"
    exit 1
fi

for script in "${shell_scripts[@]}"; do
    bash -n "$script" || status=1
done
shellcheck --external-sources --source-path=SCRIPTDIR/../..:. "${shell_scripts[@]}" || status=1
"$python" -c '
import ast, sys
for name in sys.argv[1:]:
    with open(name, encoding="utf-8") as source:
        ast.parse(source.read(), name)
' "${python_files[@]}" || status=1

echo "${#shell_scripts[@]} shell scripts and ${#python_files[@]} Python files looked at"
exit $status
