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

# serve_folder DIR [REQUEST_LOG]: a loopback HTTP server answering with the files of DIR, on a
# free port ($port, its process $server, stopped at the end), once it takes connections. The
# requests it was sent go to REQUEST_LOG.
serve_folder() {
  port=$(python3 -c 'import socket; s=socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
  python3 -m http.server "$port" --bind 127.0.0.1 --directory "$1" 2>"${2:-/dev/null}" >/dev/null &
  server=$!
  for _ in $(seq 50); do
    python3 -c "import socket; socket.create_connection(('127.0.0.1', $port))" 2>/dev/null && break
    sleep 0.1
  done
}
