#!/bin/sh
# bench/compare.sh [BUILD]: the list runs of the command line timed side by side on one generated
# market, each with one job and with every core, against the time it takes to read the price
# files once. Prints one line a run: elapsed seconds, CPU seconds, peak memory, and the ratio to
# the read time (or, for the sweeps, backtests a second), then the speed-up of all cores over one
# job. Elapsed times mean something only on an otherwise idle machine.
#
# Environment: HALVARD (the program timed; BUILD/app/cli/halvard), SYMBOLS (5000), BARS (252),
# MARKET (BUILD/bench/compare-market), JOBS (the machine's cores), BIG_SWEEP=0 to leave out the
# 50 x 50 sweep over every symbol (the longest run).
set -eu

BUILD=${1:-build}
SYMBOLS=${SYMBOLS:-5000}
BARS=${BARS:-252}
MARKET=${MARKET:-$BUILD/bench/compare-market}
JOBS=${JOBS:-$(nproc)}
BIG_SWEEP=${BIG_SWEEP:-1}
HALVARD=${HALVARD:-$BUILD/app/cli/halvard}
GENERATOR=$BUILD/bench/halvard-market
READ_FLOOR=$BUILD/bench/halvard-read-floor

for program in "$HALVARD" "$GENERATOR" "$READ_FLOOR" /usr/bin/time; do
  [ -x "$program" ] || { echo "compare.sh: $program is missing (make build first)" >&2; exit 1; }
done

stamp="$MARKET/.compare-$SYMBOLS-$BARS"
if [ ! -f "$stamp" ]; then
  rm -rf "$MARKET"
  "$GENERATOR" "$MARKET" --symbols "$SYMBOLS" --bars "$BARS" >/dev/null
  # The first 500 symbols: the list of the small sweep.
  head -n 500 "$MARKET/market.inc" >"$MARKET/first500.inc"
  touch "$stamp"
fi

# Runs a command under /usr/bin/time; sets SECONDS_TAKEN (elapsed), CPU (user + system seconds,
# all threads) and PEAK_KB.
measure() {
  timing=$(mktemp)
  /usr/bin/time -f '%e %M %U %S' -o "$timing" "$@" >/dev/null 2>&1 || {
    echo "compare.sh: failed: $*" >&2
    rm -f "$timing"
    exit 1
  }
  read -r SECONDS_TAKEN PEAK_KB user system <"$timing"
  CPU=$(awk -v u="$user" -v s="$system" 'BEGIN { printf "%.2f", u + s }')
  rm -f "$timing"
}


# Whether this build runs lists on several cores (an older one has no --jobs).
if "$HALVARD" scan --help 2>/dev/null | grep -q -- '--jobs'; then parallel=1; else parallel=0; fi

# Reading every price file of the list once, in plain C: the floor any run over the list stands
# on. Run twice; the first warms the page cache.
"$READ_FLOOR" "$MARKET" "$MARKET/market.inc" >/dev/null
measure "$READ_FLOOR" "$MARKET" "$MARKET/market.inc"
READ=$SECONDS_TAKEN
printf '%-36s %8s s %6s s CPU %6s MB\n' "read $SYMBOLS files once" "$READ" "$CPU" \
  "$((PEAK_KB / 1024))"
echo "cores: $(nproc), all-core runs with --jobs $JOBS"

ratio() { awk -v a="$1" -v b="$2" 'BEGIN { if (b > 0) printf "%.1f", a / b; else print "-" }'; }
rate() { awk -v n="$1" -v t="$2" 'BEGIN { if (t > 0) printf "%.0f", n / t; else print "-" }'; }

# One line of the table: NAME BACKTESTS COMMAND...; BACKTESTS 0 prints the ratio to the read.
line() {
  name=$1
  backtests=$2
  shift 2
  one=""
  for jobs in 1 "$JOBS"; do
    if [ "$jobs" != 1 ] && [ "$parallel" = 0 ]; then
      printf '%-36s %s\n' "$name, $jobs jobs" "(this build has no --jobs)"
      continue
    fi
    if [ "$parallel" = 1 ]; then
      measure "$HALVARD" --config "$MARKET/settings.ini" --stock-dir "$MARKET" \
        --list-dir "$MARKET" "$@" --jobs "$jobs"
    else
      measure "$HALVARD" --config "$MARKET/settings.ini" --stock-dir "$MARKET" \
        --list-dir "$MARKET" "$@"
    fi
    if [ "$backtests" = 0 ]; then
      figure="$(ratio "$SECONDS_TAKEN" "$READ") x read"
    else
      figure="$(rate "$backtests" "$SECONDS_TAKEN") backtests/s"
    fi
    printf '%-36s %8s s %6s s CPU %6s MB   %s' "$name, $jobs job(s)" "$SECONDS_TAKEN" "$CPU" \
      "$((PEAK_KB / 1024))" "$figure"
    if [ -z "$one" ]; then
      one=$SECONDS_TAKEN
      echo
    else
      echo "   ($(ratio "$one" "$SECONDS_TAKEN") x faster than 1 job)"
    fi
    [ "$jobs" = "$JOBS" ] && break
  done
}

line "scan buy, $SYMBOLS symbols" 0 scan buy --list market
line "live, $SYMBOLS symbols" 0 live --list market --corvane --pyramiding --rs
line "batch 10 x 10, 500 symbols" 50000 \
  batch --list first500 --corvane --pyramiding --rs --stoploss 0.125,1.25,0.125 --rs-days 5,14,1
if [ "$BIG_SWEEP" != 0 ]; then
  line "batch 50 x 50, $SYMBOLS symbols" $((2500 * SYMBOLS)) \
    batch --list market --corvane --pyramiding --rs --stoploss 0.125,6.25,0.125 --rs-days 1,50,1
fi
