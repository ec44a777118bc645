#!/usr/bin/env bash
# --json on every command that reports: each command runs twice, as text and with --json; the
# document must hold the fields the README lists, with the values of the text report, while
# stderr and the exit status stay as the text run has them.
# Usage: json_test.sh HALVARD TESTDATA SAMPLES
set -u
halvard=$1
data=$2/cli
responses=$2/responses
samples=$3
checker=$(dirname "$0")/json_check.py

source "$(dirname "$0")/scratch_checks.sh"
export HALVARD_LOG=$scratch/debug.log

# both SCHEMA TEXT ARGS...: runs halvard ARGS as text, then with --json (each after running
# $prepare, when set, so a command that changes files meets the same files twice). The document
# must match SCHEMA and agree with the text run's TEXT (stdout, or stderr where the text report
# names its failures there); stderr and the exit status must be the text run's. SCHEMA "none":
# a command that fails before it has anything to report prints no document.
prepare=
both() {
  local schema=$1 text=$2
  shift 2
  $prepare
  "$halvard" "$@" >"$scratch/out.txt" 2>"$scratch/err.txt"
  local rc=$?
  $prepare
  "$halvard" "$@" --json >"$scratch/out.json" 2>"$scratch/err.json"
  rcJson=$?
  # How long a refused connection took is the only thing two runs may say differently.
  sed -i -E 's/after [0-9]+ ms/after N ms/g' "$scratch/err.txt" "$scratch/err.json" "$scratch/out.json"
  check "$* --json: exit status" "$rc" "$rcJson"
  check "$* --json: stderr" "$(cat "$scratch/err.txt")" "$(cat "$scratch/err.json")"
  json=$(cat "$scratch/out.json")
  if [ "$schema" == none ]; then
    check "$* --json: no document" "" "$json"
    return
  fi
  local against=$scratch/out.txt
  [ "$text" == stderr ] && against=$scratch/err.txt
  check "$* --json: the document" "" "$(python3 "$checker" "$schema" "$scratch/out.json" "$against")"
}

# Runs over watch lists and a symbol, on the bundled samples.
cp "$samples/watchlists/sample.inc" "$scratch/lists/"
printf 'AAL\r\nNOPE\r\nAMD\r\n' >"$scratch/lists/three.inc"
listrun=(--stock-dir "$samples/data" --list-dir "$scratch/lists")
both scan stdout "${listrun[@]}" scan buy --list sample
check "scan: its list" '"list":"sample"' "$(grep -o '"list":"sample"' <<<"$json")"
both scan stdout "${listrun[@]}" --set "Scans/X Week Quantity=10" scan xweek --list three
both batch stdout "${listrun[@]}" batch --list three --pyramiding --stoploss 0.125,0.375,0.125 \
  --rs-days 10,12,2
check "batch: one sweep of both levels" '"varies":"both"' "$(grep -o '"varies":"[a-zA-Z]*"' <<<"$json")"
check "batch: a missing price file is a row" \
  '{"symbol":"NOPE","catalyst":null,"trades":null,"profit":null,"status":"Error opening stock file"}' \
  "$(grep -o '{"symbol":"NOPE"[^}]*}' <<<"$json" | head -n 1)"
both batch stdout "${listrun[@]}" batch --list sample --corvane --pyramiding --rs \
  --stoploss 0.125,0.25,0.125 --separate
check "batch --separate: the stop loss, then the RS days" $'"varies":"stopLoss"\n"varies":"rsDays"' \
  "$(grep -o '"varies":"[a-zA-Z]*"' <<<"$json")"
check "batch --separate: each sweep's best" \
  $'"bestStopLoss":0.125,"bestRsDays":null\n"bestStopLoss":null,"bestRsDays":10' \
  "$(grep -o '"bestStopLoss":[^,]*,"bestRsDays":[^}]*' <<<"$json")"
# A price file the loader refuses ends a run where it meets it: the document holds what was
# found before it, the error goes to stderr as in the text run.
mkdir -p "$scratch/mixed"
cp "$samples/data/AAL.txt" "$samples/data/AMD.txt" "$data/prices/BROKEN.txt" "$scratch/mixed/"
printf 'AAL\r\nAMD\r\nBROKEN\r\nAAL\r\n' >"$scratch/lists/mixed.inc"
mixed=(--stock-dir "$scratch/mixed" --list-dir "$scratch/lists")
both scan stdout "${mixed[@]}" --set "Scans/X Week Quantity=10" scan xweek --list mixed
check "a scan ended by a bad file: what it found" '1 ["AAL","AMD"]' "$rcJson $(grep -o '\[.*\]' <<<"$json")"
both batch stdout "${mixed[@]}" batch --list mixed --pyramiding
check "a batch ended by a bad file: its unfinished step and sweep" \
  '"finished":false,"profitMakingStocks":null @ "finished":false,"maximumProfit":null' \
  "$(grep -o '"finished":false,"[a-zA-Z]*":null' <<<"$json" | paste -sd@ | sed 's/@/ @ /')"
both walkforward stdout "${listrun[@]}" batch --list sample --corvane --pyramiding --walk-forward 3 \
  --stoploss 0.125,0.25,0.125
both walkforward stdout "${listrun[@]}" batch --list three --pyramiding --walk-forward 2
check "walk forward: a missing price file" '"missing":["NOPE"]' "$(grep -o '"missing":\[[^]]*\]' <<<"$json")"
both backtest stdout "${listrun[@]}" backtest AMD
check "backtest: the dates of the trades" '"2017-08-31" "2017-09-20" "2017-10-25"' \
  "$(grep -o '"date":"[0-9-]*"' <<<"$json" | cut -d: -f2 | paste -sd' ')"
both backtest stdout "${listrun[@]}" backtest AMD --signal
both none stdout "${listrun[@]}" backtest NOPE
check "backtest of a missing file: the text run's failure" 1 "$rcJson"

# check: every file, what the loader says of it, and the summary's counts.
fresh() {
  rm -rf "$scratch/chk"
  mkdir -p "$scratch/chk"
  cp "$data/prices/BOX.txt" "$data/prices/BROKEN.txt" "$scratch/chk/"
  printf 'Date,Open,High,Low,Close,Volume\r\r\n2024-01-12,1,2,1,1.5,100\r\r\n' >"$scratch/chk/CRCR.txt"
}
chk=(--stock-dir "$scratch/chk" --list-dir "$scratch/lists")
prepare=fresh
both check stdout "${chk[@]}" check
both check stdout "${chk[@]}" check --fix
check "check --fix: what it did" '"fixed":"rewrote the line ends (one CR LF a line, no empty line)"' \
  "$(grep -o '"fixed":"[^"]*"' <<<"$json")"
printf 'BOX\r\nCRCR\r\n' >"$scratch/lists/good.inc"
both check stdout "${chk[@]}" check --list good
check "check --list: the missing index file" '{"file":"^IXIC.txt","missing":true,"loads":false' \
  "$(grep -o '{"file":"^IXIC.txt","missing":true,"loads":false' <<<"$json")"
prepare=

# download from a local server standing in for the historical-quotes service (nothing leaves
# this machine): per-symbol failures listed in the document, named on stderr as before.
mkdir -p "$scratch/www/d" "$scratch/www/q" "$scratch/dl"
cp "$samples/data/^IXIC.txt" "$scratch/dl/"
cp "$responses/table-goog-2011.csv" "$scratch/www/table.csv"
serve_folder "$scratch/www"
printf 'GOOG\r\nORCL\r\n' >"$scratch/lists/two.inc"
dl=(--stock-dir "$scratch/dl" --list-dir "$scratch/lists" --set "Services/Provider=table"
  --set "Services/Table Host=127.0.0.1:$port" --set "Services/Timeout=5")
both download-lists stderr "${dl[@]}" download --list two --from 1/1/2011 --to 12/31/2011
check "download --list: the days and each symbol" \
  '{"from":"2011-01-01","to":"2011-12-31","skipExisting":false,"symbols":[{"symbol":"GOOG","stored":true,"error":null},{"symbol":"ORCL","stored":true,"error":null}],"lists":[{"list":"two","done":true,"failed":[]}]}' \
  "$json"
both download-lists stderr "${dl[@]}" --set "Services/Table Host=127.0.0.1:1" download --list two
check "a failed list: exit status" 1 "$rcJson"
check "a failed list: its failed symbols" '{"list":"two","done":false,"failed":["GOOG","ORCL"]}' \
  "$(grep -o '{"list":"two"[^}]*}' <<<"$json")"
both download stderr "${dl[@]}" download NEW ../escaped --from 1/1/2011 --to 12/31/2011
check "download: the stored and the failed symbol" \
  '{"symbol":"NEW","stored":true,"error":null},{"symbol":"../escaped","stored":false,"error":"a symbol cannot hold \"/\" or \"\\\""}' \
  "$(grep -o '{"symbol":"NEW".*}\]' <<<"$json" | sed 's/]$//')"

# info and rank over the stock database, filled from the same local server.
mkdir -p "$scratch/fund/data" "$scratch/fund/lists"
for f in AMD.txt A.txt ^IXIC.txt; do cp "$samples/data/$f" "$scratch/fund/data/"; done
printf 'broken\r\n' >"$scratch/fund/data/BAD.txt"
printf '"Acme &amp; Sons","NYSE",1.5,2.5,3\r\n' >"$scratch/www/d/quotes.csv"
printf '<b>Multex Abridged Business Summary</b><tr><td>Makes things.</td></tr>View Key Statistics Industry:<a href="/ic/1.html">Tools</a>' >"$scratch/www/q/pr"
fund=(--config "$scratch/fund.ini" --stock-dir "$scratch/fund/data" --list-dir "$scratch/fund/lists"
  --set "Services/Quotes Host=127.0.0.1:$port" --set "Services/Profile Host=127.0.0.1:$port"
  --set "Services/Pause=0" --set "Services/Fundamentals=quotes")
both info stdout "${fund[@]}" info AMD
check "info before any download: no name" '"name":null' "$(grep -o '"name":null' <<<"$json")"
"$halvard" "${fund[@]}" company-data >/dev/null 2>&1
both rank stderr "${fund[@]}" rank rs
check "rank rs: the file it skipped" "\"skipped\":[\"$scratch/fund/data/BAD.txt" \
  "$(grep -o '"skipped":\["[^:]*BAD.txt' <<<"$json")"
both rank stderr "${fund[@]}" rank eps
both info stdout "${fund[@]}" info AMD
check "info: the ranks as numbers" '"epsRank":100.0,"rsRank":50.0' "$(grep -o '"epsRank":.*' <<<"$json" | tr -d '}')"
both scan stdout "${fund[@]}" scan rs-rank
check "a rank scan names no list" '"list":null' "$(grep -o '"list":null' <<<"$json")"
both screen stdout "${fund[@]}" screen --local --price-min 1

# The settings and the saved combinations.
both config stdout config show
"$halvard" --list-dir "$scratch/lists" setops add sample.inc union three.inc both.inc >/dev/null 2>&1
"$halvard" --list-dir "$scratch/lists" setops add both.inc difference three.inc rest.inc >/dev/null 2>&1
both setops stdout --list-dir "$scratch/lists" setops list
check "setops list: numbered from 1" '"number":2,"first":"both.inc","operation":"difference"' \
  "$(grep -o '"number":2,"first":"both.inc","operation":"difference"' <<<"$json")"

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
