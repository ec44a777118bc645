#!/usr/bin/env python3
"""Checks one --json document of halvard against the fields the README lists for its command and
against the text report of the same run.

Usage: json_check.py COMMAND JSON_FILE TEXT_FILE
Prints what disagrees and exits 1; prints nothing and exits 0 when all agrees.
"""
import json
import re
import sys

NUMBER = (int, float)
NULLABLE_STR = (str, type(None))
NULLABLE_INT = (int, type(None))
NULLABLE_NUMBER = (int, float, type(None))
DATE = "date"  # "yyyy-mm-dd"
NULLABLE_DATE = "date or null"

# The schema of every document: a type, a tuple of types, [item schema] or {field: schema} (every
# field present, in this order, and no other).
SCHEMAS = {
    "scan": {"scan": str, "caption": str, "list": NULLABLE_STR, "symbols": [str]},
    "batch": {
        "list": str,
        "buyMode": str,
        "sweeps": [{
            "varies": str,
            "steps": [{
                "stopLoss": NUMBER,
                "rsDays": int,
                "rsCheck": bool,
                "unusualVolumeCheck": bool,
                "rows": [{
                    "symbol": str,
                    "catalyst": NULLABLE_STR,
                    "trades": NULLABLE_INT,
                    "profit": NULLABLE_NUMBER,
                    "status": str,
                }],
                "finished": bool,
                "profitMakingStocks": NULLABLE_INT,
                "lossMakingStocks": NULLABLE_INT,
                "totalTrades": NULLABLE_INT,
                "profitableTrades": NULLABLE_NUMBER,
                "losingTrades": NULLABLE_NUMBER,
                "totalProfit": NULLABLE_NUMBER,
            }],
            "finished": bool,
            "maximumProfit": NULLABLE_NUMBER,
            "bestStopLoss": NULLABLE_NUMBER,
            "bestRsDays": NULLABLE_INT,
        }],
    },
    "walkforward": {
        "list": str,
        "buyMode": str,
        "folds": int,
        "viewDays": int,
        "missing": [str],
        "skipped": [{"symbol": str, "days": int, "spanDays": int}],
        "finished": bool,
        "symbolsTested": int,
        "foldRows": [{
            "fold": int,
            "stopLoss": NULLABLE_NUMBER,
            "rsDays": NULLABLE_INT,
            "inSample": NUMBER,
            "outOfSample": NUMBER,
        }],
        "outOfSampleTotal": NULLABLE_NUMBER,
        "bestProfit": NULLABLE_NUMBER,
        "bestStopLoss": NULLABLE_NUMBER,
        "bestRsDays": NULLABLE_INT,
    },
    "backtest": {
        "symbol": str,
        "buyMode": str,
        "signalMode": bool,
        "catalyst": NULLABLE_STR,
        "trades": int,
        "profit": NUMBER,
        "sharesHeld": int,
        "fills": [{"date": DATE, "action": str, "shares": int, "price": NUMBER}],
        "buySignal": bool,
        "buySignalDate": NULLABLE_DATE,
        "stopLossHit": bool,
        "stopBuy": NUMBER,
        "stopLoss": NUMBER,
        "log": [str],
    },
    "check": {
        "files": [{
            "file": str,
            "missing": bool,
            "loads": bool,
            "line": NULLABLE_INT,
            "problem": NULLABLE_STR,
            "fixed": NULLABLE_STR,
        }],
        "checked": int,
        "notLoading": int,
        "fixed": int,
        "missing": int,
    },
    "download": {
        "from": DATE,
        "to": DATE,
        "skipExisting": bool,
        "symbols": [{"symbol": str, "stored": bool, "error": NULLABLE_STR}],
    },
    "info": {
        "symbol": str,
        "name": NULLABLE_STR,
        "exchange": str,
        "industry": str,
        "summary": str,
        "epsRank": NUMBER,
        "rsRank": NUMBER,
    },
    "config": {"settings": [{"section": str, "name": str, "value": str}]},
    "setops": {
        "combinations": [{
            "number": int,
            "first": str,
            "operation": str,
            "second": str,
            "result": str,
        }]
    },
    "rank": {"rank": str, "skipped": [str]},
    "screen": {
        "symbols": [str],
        "skipped": [str],
        "notApplied": [str],
        "pages": int,
        "pageCapReached": bool,
    },
}
# A download over lists adds how each list ended.
SCHEMAS["download-lists"] = dict(SCHEMAS["download"],
                                 lists=[{"list": str, "done": bool, "failed": [str]}])

problems = []


def fail(text):
    problems.append(text)


def validate(value, schema, where):
    if schema in (DATE, NULLABLE_DATE):
        if value is None and schema == NULLABLE_DATE:
            return
        if not isinstance(value, str) or not re.fullmatch(r"\d{4}-\d{2}-\d{2}", value):
            fail(f"{where}: {value!r} is no yyyy-mm-dd date")
    elif isinstance(schema, dict):
        if not isinstance(value, dict):
            fail(f"{where}: not an object")
            return
        if list(value) != list(schema):
            fail(f"{where}: fields {list(value)}, documented {list(schema)}")
        for name, field in schema.items():
            if name in value:
                validate(value[name], field, f"{where}.{name}")
    elif isinstance(schema, list):
        if not isinstance(value, list):
            fail(f"{where}: not an array")
            return
        for i, item in enumerate(value):
            validate(item, schema[0], f"{where}[{i}]")
    else:
        types = schema if isinstance(schema, tuple) else (schema,)
        # A JSON true is no number, and a number is no true.
        if isinstance(value, bool) != (bool in types) or not isinstance(value, types):
            fail(f"{where}: {value!r} is not {schema}")


def expect(name, wanted, actual):
    if wanted != actual:
        fail(f"{name}: the text says {wanted!r}, the document {actual!r}")


def money(text):
    """An amount as the reports print it: 1,234.50, (0.50) or -1,234.50."""
    text = text.rstrip("$").replace(",", "")
    if text.startswith("("):
        return -float(text.strip("()"))
    return float(text)


def compare_scan(doc, text):
    expect("symbols", text.splitlines(), doc["symbols"])


def compare_batch(doc, text):
    steps = [step for sweep in doc["sweeps"] for step in sweep["steps"]]
    tables = re.split(r"^Step \d+ of \d+$", text, flags=re.M)[1:]
    expect("number of steps", len(tables), len(steps))
    for step, table in zip(steps, tables):
        rows = [line.split("\t") for line in table.splitlines() if "\t" in line[1:]]
        rows = [r for r in rows if not r[0].startswith(" ")]  # not the header
        expect("row symbols", [r[0] for r in rows], [r["symbol"] for r in step["rows"]])
        for r, row in zip(rows, step["rows"]):
            if r[1] == "Error opening stock file ":
                expect(f"{row['symbol']} status", "Error opening stock file", row["status"])
                continue
            expect(f"{row['symbol']} catalyst", r[1], row["catalyst"])
            fields = [f for f in r[2:] if f]
            expect(f"{row['symbol']} trades", int(fields[0]), row["trades"])
            expect(f"{row['symbol']} profit", money(fields[1]), row["profit"])
            expect(f"{row['symbol']} status", fields[2], row["status"])
        sums = dict(re.findall(r"^(.*) = (.*)$", table, flags=re.M))
        expect("a summary when finished", "Total Profit/Loss" in sums, step["finished"])
        if not step["finished"]:
            continue
        expect("stop loss", float(re.search(r"Stop loss is ([\d.]+)\$", table).group(1)),
               step["stopLoss"])
        expect("profit making", int(sums["Profit Making Stocks"]), step["profitMakingStocks"])
        expect("loss making", int(sums["Loss Making Stocks"]), step["lossMakingStocks"])
        expect("total trades", int(sums["Total Trades"]), step["totalTrades"])
        expect("profitable", money(sums["Profitable Trades"]), step["profitableTrades"])
        expect("losing", money(sums["Losing Trades"]), step["losingTrades"])
        expect("total", money(sums["Total Profit/Loss"]), step["totalProfit"])
    maxima = re.findall(r"^Maximum profit = ([-\d.e+]+) ", text, flags=re.M)
    expect("maximum profits", [float(m) for m in maxima],
           [s["maximumProfit"] for s in doc["sweeps"] if s["finished"]])


def compare_walkforward(doc, text):
    expect("missing", re.findall(r"^(\S+)\tError opening stock file", text, flags=re.M),
           doc["missing"])
    expect("skipped", re.findall(r"^(\S+)\tSkipped: ", text, flags=re.M),
           [s["symbol"] for s in doc["skipped"]])
    expect("symbols tested", int(re.search(r"^Symbols tested = (\d+)", text, flags=re.M).group(1)),
           doc["symbolsTested"])
    rows = [line.split("\t") for line in text.splitlines() if re.match(r"\d+\t", line)]
    expect("fold rows", [(int(r[0]), None if r[1] == "none" else float(r[1]),
                          None if r[2] == "none" else int(r[2]), money(r[3]), money(r[4]))
                         for r in rows],
           [(f["fold"], f["stopLoss"], f["rsDays"], f["inSample"], f["outOfSample"])
            for f in doc["foldRows"]])
    expect("out-of-sample total",
           money(re.search(r"^Out-of-sample total = (.*)$", text, flags=re.M).group(1)),
           doc["outOfSampleTotal"])
    best = re.search(r"^In-sample best over the whole history = ([-\d,.]+)", text, flags=re.M)
    expect("in-sample best", money(best.group(1)), doc["bestProfit"] or 0)


def compare_backtest(doc, text):
    expect("log", text.splitlines(), doc["log"])
    fills = [line for line in text.splitlines() if re.match(r"(Bought|Sold) \d+ at ", line)]
    expect("fills", [(f.split()[0] == "Bought", int(f.split()[1]), float(f.split()[3]))
                     for f in fills],
           [(f["action"] == "buy", f["shares"], f["price"]) for f in doc["fills"]])
    expect("trades: a buy or a sale each", len(fills), doc["trades"])
    expect("symbol", f"Backtesting - {doc['symbol']}", text.splitlines()[1])


def compare_check(doc, text):
    lines = text.splitlines()
    named = [f for f in doc["files"] if f["missing"] or f["problem"] or f["fixed"]]
    expect("files named", [line.split(":")[0] for line in lines[:-1]], [f["file"] for f in named])
    for f, line in zip(named, lines):
        if f["problem"]:
            expect(f"{f['file']} problem", line.split(": ", 1)[1], f["problem"])
            where = line.split(": ", 1)[0].split(":")
            expect(f"{f['file']} line", int(where[1]) if len(where) > 1 else None, f["line"])
            expect(f"{f['file']} loads", False, f["loads"])
    expect("files checked", int(lines[-1].split()[0]), doc["checked"])
    summary = lines[-1]
    loading = re.search(r"(\d+) (?:does|do) not load", summary)
    expect("not loading", int(loading.group(1)) if loading else 0, doc["notLoading"])
    fixed = re.search(r"(\d+) fixed", summary)
    expect("fixed", int(fixed.group(1)) if fixed else 0, doc["fixed"])
    missing = re.search(r"(\d+) missing", summary)
    expect("missing", int(missing.group(1)) if missing else 0, doc["missing"])


def compare_download(doc, text):
    # The text is stderr: one "Failed to download SYMBOL: why" a failed symbol.
    failed = re.findall(r"^halvard: Failed to download (\S+): (.*)$", text, flags=re.M)
    expect("failed symbols", failed,
           [(s["symbol"], s["error"]) for s in doc["symbols"] if not s["stored"]])
    for lst in doc.get("lists", []):
        expect(f"list {lst['list']} done", not lst["failed"], lst["done"])


def compare_info(doc, text):
    lines = text.splitlines()
    expect("name", lines[0], doc["name"] or "Company")
    fields = dict(line.split(" : ", 1) for line in lines[1:])
    expect("exchange", fields["Exchange"], doc["exchange"])
    expect("industry", fields["Industry"], doc["industry"])
    expect("summary", fields["Business Summary"], doc["summary"])
    expect("EPS rank", float(fields["EPS Rank"]), doc["epsRank"])
    expect("RS rank", float(fields["RS Rank"]), doc["rsRank"])


def compare_config(doc, text):
    expect("settings", text.splitlines(),
           [f"{s['section']}/{s['name']}={s['value']}" for s in doc["settings"]])


def compare_setops(doc, text):
    expect("combinations", text.splitlines(), [
        f"{c['number']}: {c['first']} {c['operation']} {c['second']} -> {c['result']}"
        for c in doc["combinations"]
    ])


def compare_rank(doc, text):
    # The text is stderr: one "halvard: skipped FILE: why" a skipped file.
    expect("skipped", re.findall(r"^halvard: skipped (.*)$", text, flags=re.M), doc["skipped"])


def compare_screen(doc, text):
    expect("symbols", text.splitlines(), doc["symbols"])


def main():
    command, json_file, text_file = sys.argv[1:4]
    with open(json_file, encoding="utf-8") as f:
        raw = f.read()
    with open(text_file, encoding="utf-8") as f:
        text = f.read()
    if raw.count("\n") != 1 or not raw.endswith("\n"):
        fail("the document is not one line")
    try:
        doc = json.loads(raw)
    except ValueError as e:
        print(f"{command}: not JSON: {e}")
        return 1
    validate(doc, SCHEMAS[command], command)
    if not problems:
        globals()["compare_" + command.split("-")[0]](doc, text)
    for p in problems:
        print(f"{command}: {p}")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
