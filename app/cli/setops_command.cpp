// halvard setops: combine two watch lists into a third (union, intersect, difference), and keep,
// list and replay such combinations in booldb.dat of the watch-list folder.

#include <iostream>

#include "commands.h"
#include "halvard/error.h"
#include "halvard/runs/report_json.h"
#include "halvard/tools/boolean_db.h"
#include "json_output.h"

namespace halvard::cli {
namespace {

namespace fs = std::filesystem;
using tools::BooleanDB;
using tools::SetOpRecord;

const std::vector<std::string> kOperations = {"union", "intersect", "difference"};

struct SetOpsArgs {
  SetOpRecord record;
  int number = 0;  // a record counted from 1
  bool json = false;
};

fs::path ListFolder(const GlobalOptions& options) {
  return OpenSession(options, StartMode::kFull)->config.IncFilePath;
}

struct OpenDB {
  explicit OpenDB(const GlobalOptions& options, bool toChange = true)
      : folder(ListFolder(options)) {
    db.ReadFile(folder / tools::kBooleanDBFileName, toChange);
  }
  fs::path folder;
  BooleanDB db;
};

SetOpRecord Current(const BooleanDB& db) {
  SetOpRecord r;
  db.getCurrent(r.firstList, r.secondList, r.operation, r.result);
  return r;
}

void Show(int number, const SetOpRecord& r) {
  std::cout << number << ": " << r.firstList << " " << r.operation << " " << r.secondList << " -> "
            << r.result << "\n";
}

void Select(BooleanDB& db, int number) {
  if (number < 1 || number > db.count()) {
    throw UsageError("there is no record " + std::to_string(number) + "; " +
                     std::string(tools::kBooleanDBFileName) + " holds " +
                     std::to_string(db.count()));
  }
  db.setPosition(number - 1);
}

void Ran(const SetOpRecord& r, size_t symbols) {
  std::cout << "wrote " << r.result << " (" << symbols << " symbols)\n";
}

void AddRecordArgs(Command& command, SetOpRecord& r) {
  command.Add("FIRST", r.firstList, "The first watch list (NAME.inc)").Required();
  command.Add("OPERATION", r.operation, "union, intersect or difference")
      .Required()
      .OneOf(kOperations);
  command.Add("SECOND", r.secondList, "The second watch list (NAME.inc)").Required();
  command.Add("RESULT", r.result, "The file to write, as named (no extension added)").Required();
}

}  // namespace

void AddSetOpsCommand(Command& program, const GlobalOptions& options) {
  auto args = std::make_shared<SetOpsArgs>();
  auto setops = program.Subcommand("setops", "Combine watch lists and replay saved combinations");
  setops.NeedsSubcommand();

  auto apply = setops.Subcommand("apply", "Combine two lists into a third");
  AddRecordArgs(apply, args->record);
  apply.OnRun(
      [&options, args] { Ran(args->record, tools::RunCurr(ListFolder(options), args->record)); });

  auto list = setops.Subcommand("list", "The saved combinations, numbered from 1");
  AddJsonFlag(list, args->json);
  list.OnRun([&options, args] {
    OpenDB o(options, false);
    std::vector<SetOpRecord> records;
    for (int k = 1; k <= o.db.count(); ++k) {
      o.db.setPosition(k - 1);
      records.push_back(Current(o.db));
    }
    if (args->json) {
      PrintJson(runs::SetOpsJson(records));
      return;
    }
    for (size_t k = 0; k < records.size(); ++k) Show(static_cast<int>(k) + 1, records[k]);
  });

  auto add = setops.Subcommand("add", "Save a combination");
  AddRecordArgs(add, args->record);
  add.OnRun([&options, args] {
    OpenDB o(options);
    const SetOpRecord& r = args->record;
    o.db.AddRecord(r.firstList, r.secondList, r.operation, r.result);
    o.db.WriteFile();
    Show(o.db.count(), r);
  });

  auto remove = setops.Subcommand("delete", "Delete saved combination N");
  remove.Add("N", args->number, "The record, counted from 1").Required();
  remove.OnRun([&options, args] {
    OpenDB o(options);
    Select(o.db, args->number);
    o.db.DeleteCurr();
    o.db.WriteFile();
  });

  auto run = setops.Subcommand("run", "Run saved combination N");
  run.Add("N", args->number, "The record, counted from 1").Required();
  run.OnRun([&options, args] {
    OpenDB o(options);
    Select(o.db, args->number);
    const SetOpRecord r = Current(o.db);
    Ran(r, tools::RunCurr(o.folder, r));
  });

  setops.Subcommand("run-all", "Run every saved combination, first to last").OnRun([&options] {
    OpenDB o(options);
    for (int k = 1; k <= o.db.count(); ++k) {
      o.db.setPosition(k - 1);
      const SetOpRecord r = Current(o.db);
      Ran(r, tools::RunCurr(o.folder, r));
    }
  });
}

}  // namespace halvard::cli
