#!/usr/bin/env bash
# Fails, naming the files, when a tracked C++ file differs from what clang-format makes of it
# under the root .clang-format. `make format` rewrites them in place.
set -euo pipefail
cd "$(dirname "$0")/.."
mapfile -t files < <(git ls-files '*.cpp' '*.h')
bad=()
for f in "${files[@]}"; do
  clang-format --dry-run -Werror "$f" >/dev/null 2>&1 || bad+=("$f")
done
if [ ${#bad[@]} -gt 0 ]; then
  echo "Not formatted (run make format):"
  printf '  %s\n' "${bad[@]}"
  exit 1
fi
echo "All ${#files[@]} C++ files are formatted."
