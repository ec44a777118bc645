# Sourced by the command-line test scripts: a scratch home that no user setting reaches, removed
# (with the loopback server the script may start as $server) when the script ends, and the
# check counters the script reports at its end.
scratch=$(mktemp -d)
trap '[ -n "${server:-}" ] && kill "$server" 2>/dev/null; rm -rf "$scratch"' EXIT
export HOME=$scratch/home XDG_DATA_HOME=$scratch/share XDG_CONFIG_HOME=$scratch/config
unset HALVARD_CONFIG HALVARD_SAMPLES
mkdir -p "$HOME" "$scratch/lists"

passed=0
failed=0
# check NAME EXPECTED ACTUAL
check() {
  if [ "$2" == "$3" ]; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    printf 'FAILED: %s\n--- expected\n%s\n--- actual\n%s\n' "$1" "$2" "$3"
  fi
}
