#!/usr/bin/env bash
# Checks that each folder of the library includes only its own headers, error.h and the floors
# below it that src/halvard/floors.txt gives it (the same table the build links the folders'
# libraries by). Names every include that breaks the rule, with its file and line, and fails.
set -euo pipefail
cd "$(dirname "$0")/.."
table=src/halvard/floors.txt
status=0

declare -A may  # folder -> " own floor floor ... "
while IFS= read -r entry; do
  entry=${entry%%#*}
  [[ $entry =~ ^[[:space:]]*$ ]] && continue
  folder=${entry%%:*}
  folder=${folder//[[:space:]]/}
  read -r -a below <<<"${entry#*:}"
  # A floor below must have its own line above this one: the floors can never form a loop.
  for floor in "${below[@]}"; do
    if [[ -z ${may[$floor]+set} ]]; then
      echo "$table: $folder/ names $floor/, which is not a floor listed above it"
      status=1
    fi
  done
  may[$folder]=" $folder ${below[*]} "
done <"$table"

include='^[[:space:]]*#[[:space:]]*include[[:space:]]*["<]halvard/'
for dir in src/halvard/*/; do
  folder=$(basename "$dir")
  if [[ -z ${may[$folder]+set} ]]; then
    echo "src/halvard/$folder/: this folder has no line in $table"
    status=1
    continue
  fi
  while IFS=: read -r file line text; do
    [[ $text =~ halvard/([^/\">]+)/ ]] || continue  # error.h, at the top of the library
    used=${BASH_REMATCH[1]}
    if [[ ${may[$folder]} != *" $used "* ]]; then
      allowed=${may[$folder]# $folder }
      allowed=${allowed% }
      echo "$file:$line: $folder/ may not include $used/ (below it: ${allowed:-nothing})"
      status=1
    fi
  done < <(grep -rHnE "$include" "$dir" || true)
done

# The headers at the top of the library sit under every floor: they include none of them.
while IFS=: read -r file line text; do
  echo "$file:$line: the top of the library may not include a floor"
  status=1
done < <(grep -HnE "${include}[^/\">]+/" src/halvard/*.h src/halvard/*.cpp 2>/dev/null || true)

if ((status == 0)); then echo "check-layers: every include keeps to the floors of $table"; fi
exit $status
