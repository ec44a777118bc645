#!/usr/bin/env bash
# The command line as a user meets it: output, messages and exit codes of halvard.
# Usage: cli_test.sh HALVARD TESTDATA SAMPLES
set -u
halvard=$1
data=$2/cli
samples=$3

source "$(dirname "$0")/scratch_checks.sh"
# run ARGS...: sets out, err, rc
run() {
  out=$("$halvard" "$@" 2>"$scratch/stderr")
  rc=$?
  err=$(cat "$scratch/stderr")
}
box=(--stock-dir "$data/prices" --list-dir "$scratch/lists")

run "${box[@]}" boxes BOX --view 2 --json
check "boxes --json" '{"symbol":"BOX","barCount":9,"viewDays":24,"boxes":[[7,6,2,1]],"corvanes":[]}' "$out"
check "boxes --json exit status" 0 "$rc"
check "missing index warning" "halvard: warning: Unable to read ^IXIC.txt, Relative Strength Not Available" "$err"

run "${box[@]}" boxes BOX --view 2
check "boxes as text" "$(cat "$data/boxes_box_view2.txt")" "$out"

run "${box[@]}" --set "View/Current=2" boxes BOX --json
check "--set chooses the view" '{"symbol":"BOX","barCount":9,"viewDays":24,"boxes":[[7,6,2,1]],"corvanes":[]}' "$out"

run "${box[@]}" boxes NOPE
check "missing symbol exit status" 1 "$rc"
check "missing symbol message" "halvard: error: no price file for NOPE: $data/prices/NOPE.txt does not exist" \
  "$(tail -n 1 <<<"$err")"

run "${box[@]}" boxes BROKEN
check "broken file exit status" 1 "$rc"
check "broken file message" "halvard: error: $data/prices/BROKEN.txt line 3: the high \"two\" is not a number" \
  "$(tail -n 1 <<<"$err")"

run "$(printf 'x\033y')"
check "a typed word is quoted with its control bytes escaped" \
  'halvard: usage error: unknown command "x\x1by"' "$(head -n 1 <<<"$err")"
run config get Display "$(printf 'a%.0s' {1..300})"
check "a long setting name is cut in the message" "(308 bytes in all)" \
  "$(grep -o "([0-9]* bytes in all)" <<<"$err")"
run "${box[@]}" boxes BOX --view 9
check "view out of range is a usage error" 2 "$rc"
run "${box[@]}" --set "View/Nothing=1" boxes BOX
check "unknown --set is a usage error" 2 "$rc"
run "${box[@]}" --set "View/Current=x" boxes BOX
check "--set that does not convert is a usage error" 2 "$rc"

# A real history whose trade log was checked by hand, day by day, against its price file.
samplesrun=(--stock-dir "$samples/data" --list-dir "$samples/watchlists")
run "${samplesrun[@]}" backtest AMD
check "backtest of AMD" "$(cat "$data/backtest_amd.txt")" "$out"
run "${box[@]}" backtest NOPE
check "backtest of a missing symbol" 1 "$rc"

# live --json: the text report's rows, numbers as numbers.
run "${samplesrun[@]}" live --list sample --corvane --pyramiding --rs
text_buys=$(awk -F'\t' '$2 == "Buy" {print $1, $4, $5}' <<<"$out")
run "${samplesrun[@]}" live --list sample --corvane --pyramiding --rs --json
check "live --json holds the text's Buy rows" "$text_buys" "$(python3 -c '
import json, sys
for row in json.load(sys.stdin)["passes"][0]["rows"]:
    if row["action"] == "Buy": print(row["symbol"], repr(row["stopBuy"]), repr(row["stopLoss"]))' <<<"$out")"
check "live --json is one line" "1" "$(wc -l <<<"$out")"
run --config "$scratch/daily-samples.ini" "${samplesrun[@]}" daily --list sample --corvane --pyramiding --rs \
  --reports "$scratch/daily-samples"
check "daily prints the live report's Buy rows with their levels" "$(sort <<<"$text_buys")" \
  "$(head -n -1 <<<"$out" | awk -F'\t' '{print $1, $4, $5}' | sort)"
check "newest signal first" "$(head -n -1 <<<"$out" | cut -f3 | awk -F/ '{printf "%d%02d%02d\n", $3, $1, $2}' | sort -r)" \
  "$(head -n -1 <<<"$out" | cut -f3 | awk -F/ '{printf "%d%02d%02d\n", $3, $1, $2}')"
check "and the list's line" "sample: 40 symbols checked, 40 with stale prices, $(wc -l <<<"$text_buys") Buy, no failure" \
  "$(tail -n 1 <<<"$out")"

# The chart: the status bar's texts on stdout (the newest line of AMD.txt), the drawing in a file.
run "${samplesrun[@]}" chart AMD --view 5 -o "$scratch/amd.svg"
check "chart status texts" $'One Year View - AMD\nLast Day - 12/29/2017: 10.57,10.58,10.27,10.28,26678900 Last Box : 11.19,10.2 ' "$out"
check "chart writes an SVG" "yes" "$(grep -q '^<svg ' "$scratch/amd.svg" && grep -q '</svg>' "$scratch/amd.svg" && echo yes || echo no)"
run "${samplesrun[@]}" chart AMD --view 5 -o -
check "chart -o - writes the drawing alone to stdout" "yes" \
  "$(grep -q '^<svg ' <<<"$out" && grep -q '</svg>' <<<"$out" && echo yes || echo no)"
check "chart -o - puts the status texts on stderr" "One Year View - AMD" "$(head -n 1 <<<"$err")"
run "${box[@]}" chart NOPE -o "$scratch/nope.svg"
check "chart of a missing symbol writes nothing" "1 no" "$rc $([ -e "$scratch/nope.svg" ] && echo yes || echo no)"

# Settings: a fresh machine has none; show gives the defaults, set writes one value.
run config show
check "config show on a fresh machine" "$(sed "s|@DATA@|$XDG_DATA_HOME|" "$data/config_show_defaults.txt")" "$out"
check "config show writes nothing" "no" "$([ -e "$XDG_CONFIG_HOME/halvard600/settings.ini" ] && echo yes || echo no)"
run config set batch "stop loss limit" 0.25
check "config set answers" "Batch/Stop Loss Limit=0.25" "$out"
run config get Batch "Stop Loss Limit"
check "config get" "0.25" "$out"
check "settings file" $'[Batch]\r\nStop Loss Limit=0.25\r' "$(cat "$XDG_CONFIG_HOME/halvard600/settings.ini")"
run config set View Current four
check "config set refuses a bad value" 2 "$rc"
run config get Batch "Stop Loss Limit"
check "a refused value leaves the file" "0.25" "$out"
run --config "$scratch/other.ini" config set View Current 5
run --config "$scratch/other.ini" config get View Current
check "--config names the settings file" "5" "$out"

# The [Services] section through the same three commands, with the same checks as --set; a file
# that holds a key is for its owner alone.
svc=(--config "$scratch/svc.ini")
run "${svc[@]}" config set services provider "Chart, TIINGO"
check "config set of a provider chain" "Services/Provider=chart,tiingo" "$out"
run "${svc[@]}" config get Services Fundamentals
check "config get of a default service value" "edgar" "$out"
run "${svc[@]}" config set Services Provider "chart,nowhere"
check "config set refuses an unknown provider" 2 "$rc"
run "${svc[@]}" config set Services Contact "nobody"
check "config set refuses a contact without an e-mail" 2 "$rc"
check "a new settings file is private" "600" "$(stat -c %a "$scratch/svc.ini")"
chmod 644 "$scratch/svc.ini"
run "${svc[@]}" config set Services "Stooq Key" abc123
check "config set of a key" "Services/Stooq Key=abc123" "$out"
check "a settings file holding a key is tightened" "600" "$(stat -c %a "$scratch/svc.ini")"
check "and the user is told" "halvard: warning: the settings file $scratch/svc.ini holds a service key and others could read it: it is now readable by you alone (mode 0600)" "$err"

# A configured folder that does not exist: say so and how to go on.
run config set Paths "Stock File Path" "$scratch/nowhere"
run boxes AAL
check "missing configured folder exit status" 1 "$rc"
case "$err" in
  *"the stock files folder \"$scratch/nowhere\" does not exist"*"--stock-dir"*) check "missing folder message" ok ok ;;
  *) check "missing folder message" "mentions the folder and --stock-dir" "$err" ;;
esac

# First run with the default folders: they are made from the bundled samples.
rm "$XDG_CONFIG_HOME/halvard600/settings.ini"
run boxes AAL --json
check "first run works on the samples" 0 "$rc"
check "first run says what it made" "halvard: first run: created the stock files folder $XDG_DATA_HOME/halvard600/data with 41 sample files" \
  "$(head -n 1 <<<"$err")"
check "first run lists" "yes" "$([ -e "$XDG_DATA_HOME/halvard600/watchlists/sample.inc" ] && echo yes || echo no)"
check "no index warning once the samples are there" "" "$(grep -c warning <<<"$err" | grep -v '^0$')"

# Runs over a watch list: scans, the live report and the batch test on the bundled samples.
cp "$samples/watchlists/sample.inc" "$scratch/lists/"
printf 'AAL\r\nNOPE\r\nAMD\r\n' >"$scratch/lists/three.inc"
listrun=(--stock-dir "$samples/data" --list-dir "$scratch/lists")
run "${listrun[@]}" scan buy --list sample --save
check "buy scan exit status" 0 "$rc"
check "--save writes the printed symbols with CR LF and one more" "$(printf '%s\r\n' $out; printf '\r\n')" \
  "$(cat "$scratch/lists/buy.inc")"
check "a list of old prices says so, then where it saved" \
  $'halvard: warning: newest prices are from 12/29/2017\nhalvard: saved the list as '"$scratch/lists/buy.inc" "$err"
run "${listrun[@]}" --set "Scans/X Week Quantity=10" scan xweek --list three --save
check "x-week scan skips a missing file" $'AAL\nAMD' "$out"
check "x-week list name" "yes" "$([ -e "$scratch/lists/10WeekHigh.inc" ] && echo yes || echo no)"
run "${listrun[@]}" scan inbox --list three --save mine.inc
check "--save LIST" "yes" "$([ -e "$scratch/lists/mine.inc" ] && echo yes || echo no)"
run "${listrun[@]}" scan nothing --list three
check "unknown scan is a usage error" 2 "$rc"
run "${listrun[@]}" scan buy --list absent
check "missing list exit status" 1 "$rc"

run "${listrun[@]}" live --list three --corvane --pyramiding --rs --save-inc tobuy \
  --save-results "$scratch/report.txt"
check "live exit status" 0 "$rc"
check "live reports the missing file" "NOPE	Error opening stock file " "$(grep NOPE <<<"$out")"
check "--save-results is the report with CR LF and one more" "$(sed 's/$/\r/' <<<"$out")"$'\n\r' \
  "$(cat "$scratch/report.txt"; echo)"
check "--save-inc holds the Buy rows" "$(grep -P '\tBuy\t' <<<"$out" | cut -f1 | sed 's/$/\r/')"$'\n\r' \
  "$(cat "$scratch/lists/tobuy.inc"; echo)"
run "${listrun[@]}" live --list three --stoploss 1,2,0
check "a zero step is a usage error" 2 "$rc"
check "a zero step says why" "halvard: usage error: stop-loss levels: a step of 0 would repeat the same level for ever" "$(tail -n 1 <<<"$err")"
run "${listrun[@]}" batch --list three --pyramiding --rs-days 5,x,1
check "a bad level is a usage error" 2 "$rc"

run "${listrun[@]}" batch --list three --pyramiding --stoploss 0.125,0.375,0.125 --separate
check "batch --separate exit status" 0 "$rc"
check "batch --separate: a best for each range" 2 "$(grep -c '^Maximum profit = ' <<<"$out")"
check "batch steps" "Step 1 of 3 Step 2 of 3 Step 3 of 3 Step 1 of 1" "$(grep '^Step' <<<"$out" | tr '\n' ' ' | sed 's/ $//')"

run "${listrun[@]}" batch --list three --pyramiding --stoploss 0.125,0.375,0.125 --walk-forward 2
check "batch --walk-forward exit status" 0 "$rc"
check "batch --walk-forward: the missing file, the tested, a row per fold, the totals" \
  "NOPE	Error opening stock file |Symbols tested = 2|1|2|Out-of-sample total|In-sample best over the whole history" \
  "$(grep -E '^(NOPE|Symbols|[0-9]+	|Out-of|In-sample)' <<<"$out" | sed -E 's/^([0-9]+)	.*/\1/; s/^(Out-of-sample total|In-sample best over the whole history) = .*/\1/' | paste -sd '|')"
check "batch --walk-forward runs no sweep" 0 "$(grep -c '^Step' <<<"$out")"
run "${listrun[@]}" batch --list three --walk-forward 0
check "no folds is a usage error" 2 "$rc"
run "${listrun[@]}" batch --list three --walk-forward 2 --separate
check "--walk-forward with --separate is a usage error" 2 "$rc"

# Ctrl-C ends a long sweep between two stocks: what was done is printed, nothing is saved.
"$halvard" "${listrun[@]}" batch --list sample --pyramiding --stoploss 0,99,0.001 \
  --save-results "$scratch/never.txt" >"$scratch/partial" 2>"$scratch/stderr" &
sleep 1
kill -INT $!
wait $!
check "interrupted exit status" 130 "$?"
check "interrupted says so" "halvard: interrupted; nothing was saved" "$(cat "$scratch/stderr")"
check "interrupted saves nothing" "no" "$([ -e "$scratch/never.txt" ] && echo yes || echo no)"
check "interrupted prints what was done" "Batch Testing sample" "$(head -n 1 "$scratch/partial")"

# A report saved over an older one and interrupted: the older one stays, with no temporary file
# beside it (the report is written to the file as it is made).
printf 'old\r\n' >"$scratch/kept.txt"
"$halvard" "${listrun[@]}" batch --list sample --pyramiding --stoploss 0,99,0.001 \
  --save-results "$scratch/kept.txt" >/dev/null 2>&1 &
sleep 1
kill -INT $!
wait $!
check "interrupted over an older report: exit status" 130 "$?"
check "interrupted keeps the older report and no temporary file" $'old\r' \
  "$(cat "$scratch/kept.txt"; ls -A "$scratch" | grep '^\.kept')"

# A report of several megabytes goes out in pieces as it is made; the file holds the same text.
run "${listrun[@]}" batch --list sample --corvane --pyramiding --rs --stoploss 0.01,5,0.01 \
  --save-results "$scratch/big.txt"
check "a long report: exit status" 0 "$rc"
check "a long report is over a megabyte" "yes" "$([ "${#out}" -gt 1100000 ] && echo yes || echo no)"
check "a long report ends with the best" "Maximum profit = " "$(tail -n 1 <<<"$out" | grep -o '^Maximum profit = ')"
check "a long report saved is the report printed" "$(sed 's/$/\r/' <<<"$out")"$'\n\r' \
  "$(cat "$scratch/big.txt"; echo)"
printed=$out

# A file the report cannot be saved to: the whole report is printed first, then why.
run "${listrun[@]}" batch --list sample --corvane --pyramiding --rs --stoploss 0.01,5,0.01 \
  --save-results "$scratch/nofolder/big.txt"
check "a refused save: exit status" 1 "$rc"
check "a refused save prints the whole report" "yes" "$([ "$out" = "$printed" ] && echo yes || echo no)"
check "a refused save says why" \
  "halvard: error: $scratch/nofolder/big.txt: cannot create a file in its folder: No such file or directory" \
  "$(tail -n 1 <<<"$err")"

# A price file the loader refuses ends a run where it meets it: what was found before it is
# printed, then the file, the line and the problem; nothing is saved.
mkdir -p "$scratch/mixed"
cp "$samples/data/AAL.txt" "$samples/data/AMD.txt" "$data/prices/BROKEN.txt" "$scratch/mixed/"
printf 'AAL\r\nAMD\r\nBROKEN\r\nAAL\r\n' >"$scratch/lists/mixed.inc"
mixed=(--stock-dir "$scratch/mixed" --list-dir "$scratch/lists")
broken="halvard: error: $scratch/mixed/BROKEN.txt line 3: the high \"two\" is not a number"
rm "$scratch/lists/10WeekHigh.inc"
run "${mixed[@]}" --set "Scans/X Week Quantity=10" scan xweek --list mixed --save
check "a bad file ends a scan after what it found" $'1 AAL\nAMD' "$rc $out"
check "a bad file in a scan is named" "$broken" "$(tail -n 1 <<<"$err")"
check "a scan ended by a bad file saves nothing" "no" "$([ -e "$scratch/lists/10WeekHigh.inc" ] && echo yes || echo no)"
run "${mixed[@]}" live --list mixed --save-inc never
check "a bad file ends live after its rows" "1 AAL AMD" "$rc $(grep -oP '^(AAL|AMD)(?=\t)' <<<"$out" | tr '\n' ' ' | sed 's/ $//')"
check "a bad file in live is named" "$broken" "$(tail -n 1 <<<"$err")"
check "live ended by a bad file saves nothing" "no" "$([ -e "$scratch/lists/never.inc" ] && echo yes || echo no)"
printf 'AAL\r\n../x\r\n' >"$scratch/lists/escape.inc"
run "${mixed[@]}" scan buy --list escape
check "a path in a list is refused with the list and the line" \
  "1 halvard: error: watch list $scratch/lists/escape.inc line 2: \"../x\" is not a symbol: a symbol cannot hold \"/\" or \"\\\"" \
  "$rc $(tail -n 1 <<<"$err")"
run "${mixed[@]}" boxes ../mixed/AAL
check "a path is no symbol for boxes" "1 halvard: error: \"../mixed/AAL\" is not a symbol: a symbol cannot hold \"/\" or \"\\\"" \
  "$rc $(tail -n 1 <<<"$err")"

# check: the files the loader refuses, one a line, and a summary; --fix repairs what it can.
mkdir -p "$scratch/chk"
cp "$data/prices/BOX.txt" "$data/prices/BROKEN.txt" "$scratch/chk/"
printf 'Date,Open,High,Low,Close,Volume\r\r\n2024-01-12,1,2,1,1.5,100\r\r\n' >"$scratch/chk/CRCR.txt"
chk=(--stock-dir "$scratch/chk" --list-dir "$scratch/lists")
run "${chk[@]}" check
check "check names each bad file" $'1 BROKEN.txt:3: the high "two" is not a number\nCRCR.txt:2: expected at least 6 comma-separated fields, found 1\n3 files checked: 2 do not load' "$rc $out"
run "${chk[@]}" check --fix
check "check --fix repairs what it can" $'1 BROKEN.txt:3: the high "two" is not a number\nCRCR.txt: fixed: rewrote the line ends (one CR LF a line, no empty line)\n3 files checked: 1 does not load, 1 fixed' "$rc $out"
printf 'BOX\r\nCRCR\r\n' >"$scratch/lists/good.inc"
run "${chk[@]}" check --list good
check "check --list: its symbols and the index file" $'0 ^IXIC.txt: no such file\n2 files checked: all load, 1 missing' "$rc $out"

# Downloads from a local server standing in for the historical-quotes service (the table
# provider); the same genuine answer for every symbol. Nothing leaves this machine.
export HALVARD_LOG=$scratch/debug.log
mkdir -p "$scratch/www" "$scratch/dl"
cp "$samples/data/^IXIC.txt" "$scratch/dl/"  # no index warning in the answers
cp "$2/responses/table-goog-2011.csv" "$scratch/www/table.csv"
serve_folder "$scratch/www"
printf ' GOOG \r\n\r\nORCL\r\n' >"$scratch/lists/two.inc"
dl=(--stock-dir "$scratch/dl" --list-dir "$scratch/lists" --set "Services/Provider=table"
  --set "Services/Table Host=127.0.0.1:$port" --set "Services/Timeout=5")
run "${dl[@]}" download --list two --from 1/1/2011 --to 12/31/2011
check "download --list answers" "Inc List Successfully download" "$out"
check "download --list exit status" 0 "$rc"
check "download writes CR LF" "Date,Open,High,Low,Close,Volume,Adj Close"$'\r' "$(head -n 1 "$scratch/dl/GOOG.txt")"
check "download logs the list" "Downloading WatchList : two|Done Downloading WatchList : two" \
  "$(cut -f3 "$HALVARD_LOG" | tr -d '\r' | paste -sd'|')"
run "${dl[@]}" --set "Services/Table Host=127.0.0.1:1" download --list two --skip-existing
check "skip-existing asks nothing" "Inc List Successfully download" "$out"
run "${dl[@]}" --set "Services/Table Host=127.0.0.1:1" download --list two
check "failed list exit status" 1 "$rc"
check "failed list message" $'Error downloading inc list - Failed to download GOOG\nFailed to download ORCL' "$(tail -n 2 <<<"$err")"
run "${dl[@]}" --set "Services/Table Host=127.0.0.1:1" download NEW
check "failed symbol says why" "1 halvard: Failed to download NEW: no answer: " \
  "$rc $(grep -o '^halvard: Failed to download NEW: no answer: ' <<<"$err")"
run "${dl[@]}" download ../escaped
check "a path is no symbol" "1 halvard: Failed to download ../escaped: a symbol cannot hold \"/\" or \"\\\"" "$rc $err"
check "nothing written outside the folder" "no" "$([ -e "$scratch/escaped.txt" ] && echo yes || echo no)"
cp "$2/prices-long/^IXIC.txt" "$scratch/www/table.csv"
run "${dl[@]}" download ORCL --from 1/1/2002
check "a long history keeps its newest days" "0 halvard: ORCL: kept the newest 1001 of 4,028 days" "$rc $err"
run "${dl[@]}" boxes ORCL --json
check "and loads" '"barCount":1001' "$(grep -o '"barCount":[0-9]*' <<<"$out")"
cp "$2/responses/table-goog-2011.csv" "$scratch/www/table.csv"
run "${dl[@]}" --set "Services/Provider=nobody" download GOOG
check "unknown provider is a usage error" 2 "$rc"
# A broken index file stops every command but the download that mends it.
printf 'Date,Open,High,Low,Close,Volume\r\n2017-12-29,1,2,0.5,x,100\r\n' >"$scratch/dl/^IXIC.txt"
run "${dl[@]}" boxes GOOG
check "a broken index stops a command" "1 halvard: error: $scratch/dl/^IXIC.txt line 2: the close \"x\" is not a number" "$rc $err"
run "${dl[@]}" download '^IXIC' --from 1/1/2011 --to 12/31/2011
check "the download of a broken index warns" "0 halvard: warning: $scratch/dl/^IXIC.txt line 2: the close \"x\" is not a number" "$rc $err"
run "${dl[@]}" boxes GOOG
check "and mends it" "0 " "$rc $err"
cp "$samples/data/^IXIC.txt" "$scratch/dl/"
run "${dl[@]}" download GOOG --list two
check "symbols and lists at once is a usage error" 2 "$rc"
run "${dl[@]}" --set "Services/Provider=stooq,table" --set "Services/Stooq Host=127.0.0.1:$port" \
  --set "Services/Pause=0" download GOOG ORCL
check "a provider chain counts the services that served" "0 halvard: served by table 2" "$rc $err"
check "and the event log names the service of each symbol" "GOOG served by table|ORCL served by table" \
  "$(cut -f3 "$HALVARD_LOG" | tr -d '\r' | grep 'served by' | paste -sd'|')"

# Ctrl-C stops a download inside its request (here one that would wait a minute for an answer).
python3 -c 'import socket, time
s = socket.socket(); s.bind(("127.0.0.1", 0)); s.listen()
print(s.getsockname()[1], flush=True); time.sleep(120)' >"$scratch/silent.port" &
silent=$!
for _ in $(seq 50); do [ -s "$scratch/silent.port" ] && break; sleep 0.1; done
"$halvard" "${dl[@]}" --set "Services/Table Host=127.0.0.1:$(cat "$scratch/silent.port")" \
  --set "Services/Timeout=60" download SLOW >/dev/null 2>"$scratch/stderr" &
sleep 1
kill -INT $!
wait $!
check "Ctrl-C stops a download in its request" "130 halvard: interrupted; the price files downloaded so far are kept" \
  "$? $(cat "$scratch/stderr")"
kill "$silent"

# The scheduled download: once a day after the set time, the date stored in the settings.
sched=(--config "$scratch/sched.ini" "${dl[@]}")
run "${sched[@]}" schedule --list two
check "schedule when not enabled" "Nothing to do: automatic downloading is not enabled (Download/Enabled)" "$out"
run "${sched[@]}" config set Download Enabled True
run "${sched[@]}" config set Download Time "0:00"
run "${sched[@]}" schedule
check "schedule with no list chosen is an error" "1" "$rc"
check "schedule with no list chosen records nothing" "1/1/2000" "$("$halvard" --config "$scratch/sched.ini" config get Download Date)"
run "${sched[@]}" config set Download Lists two
run "${sched[@]}" schedule
check "schedule downloads" " Data last downloaded on : "$'\n'"$(date +%-m/%-d/%Y)" "$out"
check "schedule stores the date" "$(date +%-m/%-d/%Y)" "$("$halvard" --config "$scratch/sched.ini" config get Download Date)"
run "${sched[@]}" schedule --list two
check "schedule a second time the same day" "Nothing to do: already downloaded on $(date +%-m/%-d/%Y)" "$out"

# The evening in one command: the download when due, each list's report written as text and
# JSON into the reports folder, on stdout only the Buy rows and one line per list.
daily=(--config "$scratch/daily.ini" "${dl[@]}")
today=$(date +%F)
run "${daily[@]}" daily --list two
check "daily when the download is not enabled" \
  "0 halvard: prices not downloaded: automatic downloading is not enabled (Download/Enabled)" \
  "$rc $(head -n 1 <<<"$err")"
report=$XDG_DATA_HOME/halvard600/reports/$today-two
check "daily writes both reports in the default folder" "Daily report for two on $(date +%-m/%-d/%Y)" \
  "$(head -n 1 "$report.txt" | tr -d '\r')"
check "daily prints the JSON report's Buy rows and the list's line" \
  "$(jq -r '.report.passes[].rows[] | select(.action == "Buy") | .symbol' "$report.json" | sort)|two: 2 symbols checked, 2 with stale prices, $(jq '[.report.passes[].rows[] | select(.action == "Buy")] | length' "$report.json") Buy, no failure" \
  "$(head -n -1 <<<"$out" | cut -f1 | sort)|$(tail -n 1 <<<"$out")"
run "${daily[@]}" config set Download Enabled True
run "${daily[@]}" config set Download Time "0:00"
run "${daily[@]}" --set "Services/Table Host=127.0.0.1:1" daily --list two --reports "$scratch/reports"
check "daily with failed downloads" "1 halvard: two: Failed to download GOOG" "$rc $(grep -m 1 'two: Failed' <<<"$err")"
check "the report is still written and lists them" "Failed to download GOOG,Failed to download ORCL" \
  "$(jq -r '.failures | join(",")' "$scratch/reports/$today-two.json")"
check "and the download is done for the day" "Prices not downloaded: already downloaded on $(date +%-m/%-d/%Y)" \
  "$("$halvard" "${daily[@]}" daily --list two --reports "$scratch/reports" 2>/dev/null >/dev/null; sed -n 2p "$scratch/reports/$today-two.txt" | tr -d '\r')"
run "${daily[@]}" daily --list nosuch
check "daily of a missing list" "1 halvard: error: watch list $scratch/lists/nosuch.inc does not exist" "$rc $err"
# Company data, EPS lines and ranks from the same local server: one quotes line and one profile
# page for every symbol.
mkdir -p "$scratch/www/d" "$scratch/www/q" "$scratch/fund/data" "$scratch/fund/lists"
for f in AMD.txt A.txt ^IXIC.txt; do cp "$samples/data/$f" "$scratch/fund/data/"; done
printf '"Acme &amp; Sons","NYSE",1.5,2.5,3\r\n' >"$scratch/www/d/quotes.csv"
printf '<b>Multex Abridged Business Summary</b><tr><td>Makes things.</td></tr>View Key Statistics Industry:<a href="/ic/1.html">Tools</a>' >"$scratch/www/q/pr"
fund=(--config "$scratch/fund.ini" --stock-dir "$scratch/fund/data" --list-dir "$scratch/fund/lists"
  --set "Services/Quotes Host=127.0.0.1:$port" --set "Services/Profile Host=127.0.0.1:$port"
  --set "Services/Pause=0" --set "Services/Fundamentals=quotes")
run "${fund[@]}" info AMD
check "info before any download" $'Company\nExchange : N/A\nIndustry : N/A\nBusiness Summary : Not yet downloaded\nEPS Rank : 0\nRS Rank : 0' "$out"
run "${fund[@]}" company-data
check "company-data exit status" 0 "$rc"
run "${fund[@]}" rank rs
run "${fund[@]}" rank eps
run "${fund[@]}" info AMD
check "info after download and ranks" $'Acme & Sons\nExchange : NYSE\nIndustry : Tools\nBusiness Summary : Makes things.\nEPS Rank : 100\nRS Rank : 33' "$out"
run "${fund[@]}" info "nosuch' OR '1'='1"
check "info of a quoted name finds no other stock" $'Company\nExchange : N/A\nIndustry : N/A\nBusiness Summary : Not yet downloaded\nEPS Rank : 0\nRS Rank : 0' "$out"
run "${fund[@]}" scan rs-rank --save
check "rank scan" $'^IXIC' "$out"
check "rank scan saved under its name" $'^IXIC\r\n\r' "$(cat "$scratch/fund/lists/TopRSRank.inc")"
run "${fund[@]}" scan rs-rank --list sample
check "a rank scan takes no list" 2 "$rc"
run "${fund[@]}" scan buy
check "a list scan needs a list" 2 "$rc"
run "${fund[@]}" eps-data
line='"Acme &amp; Sons","NYSE",1.5,2.5,3~~'
check "eps-data: each answer's first line, its CR kept" "$line"$'\n'"$line"$'\n'"$line" "$(tr '\r' '~' <"$scratch/fund/data/eps.dat")"

# The same from the SEC's files, in the shapes the SEC publishes: AMD is listed with its
# documents, A is listed without them. The SEC gives no estimates.
mkdir -p "$scratch/www/files" "$scratch/www/submissions" "$scratch/www/api/xbrl/companyfacts" \
  "$scratch/edgar/data" "$scratch/edgar/lists"
for f in AMD.txt A.txt; do cp "$samples/data/$f" "$scratch/edgar/data/"; done
printf '{"fields":["cik","name","ticker","exchange"],"data":[[2488,"ADVANCED MICRO DEVICES INC","AMD","Nasdaq"],[1090872,"AGILENT TECHNOLOGIES, INC.","A","NYSE"]]}' \
  >"$scratch/www/files/company_tickers_exchange.json"
printf '{"cik":"2488","name":"ADVANCED MICRO DEVICES INC","sicDescription":"Semiconductors & Related Devices","tickers":["AMD"],"exchanges":["Nasdaq"]}' \
  >"$scratch/www/submissions/CIK0000002488.json"
printf '{"cik":2488,"entityName":"ADVANCED MICRO DEVICES INC","facts":{"us-gaap":{"EarningsPerShareDiluted":{"units":{"USD/shares":[{"start":"2022-12-25","end":"2023-12-30","val":0.53,"form":"10-K","filed":"2024-01-31"}]}}}}}' \
  >"$scratch/www/api/xbrl/companyfacts/CIK0000002488.json"
edgar=(--config "$scratch/edgar.ini" --stock-dir "$scratch/edgar/data" --list-dir "$scratch/edgar/lists"
  --set "Services/Edgar Host=127.0.0.1:$port" --set "Services/Edgar Data Host=127.0.0.1:$port")
run "${edgar[@]}" company-data </dev/null
check "edgar without a contact says how to set one" \
  "halvard: error: the edgar service needs a contact for the SEC's User-Agent: set [Services] Contact to your name and e-mail (halvard config set Services Contact \"Jane Doe jane@example.com\")" \
  "$(tail -n 1 <<<"$err")"
"$halvard" --config "$scratch/edgar.ini" config set Services Contact "Jane Doe jane@example.com" >/dev/null
run "${edgar[@]}" company-data
check "edgar company-data exit status" 0 "$rc"
check "edgar names the stock it had nothing for" 1 \
  "$(grep -c "^halvard: nothing for A: http://127.0.0.1:$port/submissions/CIK0001090872.json: .*404" <<<"$err")"
run "${edgar[@]}" info AMD
check "info from the SEC's files" $'ADVANCED MICRO DEVICES INC\nExchange : Nasdaq\nIndustry : Semiconductors & Related Devices\nBusiness Summary : \nEPS Rank : 0\nRS Rank : 0' "$out"
run "${edgar[@]}" eps-data
check "eps-data from the SEC's files" '"AMD",0.53,,' "$(tr -d '\r' <"$scratch/edgar/data/eps.dat")"
run "${edgar[@]}" scan increasing-eps
check "the increasing-EPS scan needs estimates" \
  "halvard: error: the increasing-EPS scan needs a source with estimates: no stock in the database has one (the edgar service gives none); set [Services] Fundamentals=summary and download the company data again" \
  "$(tail -n 1 <<<"$err")"
run "${edgar[@]}" screen --local --eps-min 0.5
check "screen --local on the SEC's EPS" "AMD" "$out"

kill "$server"

# Watch-list set operations and their saved combinations.
mkdir -p "$scratch/sets"
printf 'AAA\r\nBBB\r\nCCC\r\n' >"$scratch/sets/a.inc"
printf '"bbb"  \r\n\r\nDDD\r\n' >"$scratch/sets/b.inc"
sets=(--stock-dir "$samples/data" --list-dir "$scratch/sets")
run "${sets[@]}" setops apply a.inc union b.inc u.inc
check "setops apply" "wrote u.inc (4 symbols)" "$out"
check "setops union file" $'AAA\r\nBBB\r\nCCC\r\nDDD\r' "$(cat "$scratch/sets/u.inc")"
run "${sets[@]}" setops add a.inc difference b.inc d.inc
run "${sets[@]}" setops add a.inc intersect b.inc i
run "${sets[@]}" setops list
check "setops list" $'1: a.inc difference b.inc -> d.inc\n2: a.inc intersect b.inc -> i' "$out"
run "${sets[@]}" setops run-all
check "setops run-all" $'wrote d.inc (2 symbols)\nwrote i (1 symbols)' "$out"
run "${sets[@]}" setops delete 3
check "setops delete of a missing record" 2 "$rc"
run "${sets[@]}" setops add a.inc union b.inc x:y.inc
check "a name with a colon is refused" 2 "$rc"
run "${sets[@]}" setops delete 1
check "booldb.dat after delete" $'a.inc:intersect:b.inc:i\r' "$(cat "$scratch/sets/booldb.dat")"

# The stock screener: the local screen on copies of three sample files (the expected symbols
# read from the files with awk), and a screener service standing in on a local server that
# serves the same page whatever the query, so the second page brings nothing new.
mkdir -p "$scratch/scr/data" "$scratch/scr/lists" "$scratch/scrwww"
for f in A.txt AAL.txt AMD.txt ^IXIC.txt; do cp "$samples/data/$f" "$scratch/scr/data/"; done
scr=(--config "$scratch/scr.ini" --stock-dir "$scratch/scr/data" --list-dir "$scratch/scr/lists")
aal=$(awk -F, 'NR==2{print $5}' "$scratch/scr/data/AAL.txt")
expected=$(for f in A AAL AMD; do
  awk -F, -v s=$f -v m="$aal" 'NR==2 && $5+0 >= m+0 {print s}' "$scratch/scr/data/$f.txt"
done)
run "${scr[@]}" screen --local --price-min "$aal" --beta-max 1 --market-cap-min 100
check "screen --local: newest close at least AAL's" "$expected" "$out"
check "screen --local names what it did not apply" \
  "halvard: notice: not applied by the local screen: market capitalisation, beta" "$(tail -n 1 <<<"$err")"
run "${scr[@]}" screen --local --price-min "$aal" --save dear
check "screen --save writes the watch list" "$(sed 's/$/\r/' <<<"$expected")"$'\n\r' \
  "$(cat "$scratch/scr/lists/dear.inc"; echo)"
run "${scr[@]}" screen --local --price-min 9 --price-max 8
check "screen: a minimum above the maximum is a usage error" 2 "$rc"
run "${scr[@]}" screen --price-min 5
check "screen without a service or --local is a usage error" 2 "$rc"
check "screen without a service suggests --local" \
  "halvard: usage error: screen needs a screener service, and none is set ([Services] Screener Host; no public service answers its query): use --local to screen the price files and the stock database" \
  "$(head -n 1 <<<"$err")"

printf 'Symbol,Name\r\n"XOM","Exxon Mobil"\r\nIBM,IBM\r\n' >"$scratch/scrwww/screen"
serve_folder "$scratch/scrwww" "$scratch/scr.log"
run "${scr[@]}" --set "Services/Screener Host=127.0.0.1:$port" --set "Services/Pause=0" \
  screen --industry "Oil & Gas" --price-min 5 --save big
check "screen with the service" $'XOM\nIBM' "$out"
check "screen saved the service's symbols" $'XOM\r\nIBM\r\n\r' "$(cat "$scratch/scr/lists/big.inc")"
check "screen asked for pages 1 and 2" \
  $'/screen?industry=Oil%20%26%20Gas&price=5..&page=1\n/screen?industry=Oil%20%26%20Gas&price=5..&page=2' \
  "$(grep -o '/screen[^ ]*' "$scratch/scr.log")"
rm "$scratch/scrwww/screen"
run "${scr[@]}" --set "Services/Screener Host=127.0.0.1:$port" screen --price-min 5
check "screen: a failing page is an error naming it" \
  "halvard: error: screener page 1 (http://127.0.0.1:$port/screen?price=5..&page=1): HTTP status 404" "$err"
kill "$server"

# Threads: each run over a list prints, says, saves and ends the same with one job or three, on
# a copy of the samples with a symbol that has no price file and one whose file does not load.
mkdir -p "$scratch/jobs/lists"
cp -r "$samples/data" "$scratch/jobs/"
cp "$data/prices/BROKEN.txt" "$scratch/jobs/data/"
{ cat "$samples/watchlists/sample.inc"; printf 'NOPE\r\n'; } >"$scratch/jobs/lists/sample.inc"
{ cat "$samples/watchlists/sample.inc"; printf 'BROKEN\r\n'; } >"$scratch/jobs/lists/broken.inc"
jobsrun=(--config "$scratch/jobs.ini" --stock-dir "$scratch/jobs/data" --list-dir "$scratch/jobs/lists")
# same_with_jobs ARGS...: runs halvard ARGS with --jobs 1 and with --jobs 3 and compares what the
# two printed, said, saved (the report of live and batch) and their exit status.
same_with_jobs() {
  local report="$scratch/jobs/report.txt" seen=() save=()
  case $1 in live | batch) save=(--save-results "$report") ;; esac
  for jobs in 1 3; do
    rm -f "$report"
    run "${jobsrun[@]}" "$@" "${save[@]}" --jobs "$jobs"
    seen+=("$rc $out $err $(cat "$report" 2>/dev/null)")
  done
  check "$* with 1 or 3 jobs" "${seen[0]}" "${seen[1]}"
}
same_with_jobs live --list sample --corvane --pyramiding --rs --stoploss 1,2,0.5
same_with_jobs batch --list sample --stoploss 0.5,1.5,0.5 --rs-days 5,10,5
same_with_jobs batch --list sample --separate --stoploss 0.5,1.5,0.5 --rs-days 5,10,5
same_with_jobs live --list broken
for kind in buy unusual corvane 52week; do same_with_jobs scan "$kind" --list sample; done
same_with_jobs scan buy --list broken
same_with_jobs check
same_with_jobs screen --local --price-min 10

# Manners: the version, argument errors, output that cannot be written.
run --version
check "--version names the program and the version" "halvard 0.1.0" "$(head -n 1 <<<"$out")"
check "--version exit status" 0 "$rc"
run scna
check "an unknown command is a usage error" 2 "$rc"
check "an unknown command is named with the nearest one" \
  'halvard: usage error: unknown command "scna"; did you mean scan?' "$(head -n 1 <<<"$err")"
run config shwo
check "an unknown subcommand gets the nearest of its siblings" \
  'halvard: usage error: unknown command "shwo"; did you mean show?' "$(head -n 1 <<<"$err")"
run xyzzy
check "no suggestion for a word far from every command" 'halvard: usage error: unknown command "xyzzy"' \
  "$(head -n 1 <<<"$err")"
run "${box[@]}" boxes BOX --view 9
check "a value out of range says it is a usage error" "halvard: usage error:" "$(head -n 1 <<<"$err" | cut -c1-21)"
run "${box[@]}" boxes BOX --colour red
check "an unknown option says it is a usage error" "2 halvard: usage error:" "$rc $(head -n 1 <<<"$err" | cut -c1-21)"
run config set --help
check "config set describes its arguments" "3" "$(grep -c -e '^ *SECTION ' -e '^ *NAME ' -e '^ *TEXT ' <<<"$out")"
if [ -w /dev/full ]; then
  "$halvard" "${box[@]}" boxes BOX --view 2 >/dev/full 2>"$scratch/stderr"
  check "a failed write to stdout is an error" "1" "$?"
  check "a failed write to stdout says so" "halvard: error: cannot write to standard output" \
    "$(tail -n 1 "$scratch/stderr" | cut -c1-47)"
  "$halvard" --help >/dev/full 2>/dev/null
  check "help that cannot be written is an error" "1" "$?"
fi

# Hostile input: values that would not read back, special files, bytes a terminal or JSON
# cannot take.
hostile=(--config "$scratch/hostile.ini" --stock-dir "$scratch/hostile" --list-dir "$scratch/lists")
mkdir -p "$scratch/hostile"
cp "$samples/data/^IXIC.txt" "$scratch/hostile/"
run "${hostile[@]}" config set Batch "Stop Loss Limit" 1.7976931348623157e308
run "${hostile[@]}" config get Batch "Stop Loss Limit"
check "the largest double reads back" "1.7976931348623157E+308" "$out"
run "${hostile[@]}" config set Batch "Stop Loss Limit" inf
check "config set refuses inf" "2 halvard: usage error: setting [Batch] Stop Loss Limit = \"inf\" is not a finite number" "$rc $err"
run "${hostile[@]}" --set "Services/Timeout=0.0001" config show
check "a time-out below a second is refused" 2 "$rc"
mkfifo "$scratch/hostile/FIFO.txt"
run "${hostile[@]}" boxes FIFO
check "a FIFO as a price file" "1 halvard: error: $scratch/hostile/FIFO.txt: not a regular file" "$rc $err"
printf 'Date,Open,High,Low,Close,Volume\r\n2017-01-02,1,2,0.5,1,1\x002\r\n' >"$scratch/hostile/NUL.txt"
run "${hostile[@]}" boxes NUL
check "a NUL byte is shown escaped" \
  "1 halvard: error: $scratch/hostile/NUL.txt line 2: the volume \"1\\x002\" is not a number" "$rc $err"
cp "$data/prices/BOX.txt" "$scratch/hostile/"$'\xff'".txt"
run "${hostile[@]}" boxes $'\xff' --json
check "JSON of a symbol that is not UTF-8" \
  "1 halvard: error: the symbol \""$'\xff'"\" is not UTF-8 text, which JSON output needs" "$rc $err"

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
