// Every run over a list gives, with several threads, what it gives with one: the same result
// list, report, engine log, saved lists and settings afterwards, to the byte. On the bundled
// samples, and on a market of odd shapes: price files missing, histories shorter than the view
// (whose finders read the bars an earlier stock left behind), a file found only without regard to
// case, a list naming one symbol twice, a name longer than most rows, and the unusual-volume
// search that carries from stock to stock.

#include "halvard/runs/stock_walk.h"

#include <gtest/gtest.h>

#include <cctype>
#include <functional>
#include <memory>

#include "halvard/data/watch_list.h"
#include "halvard/platform/line_reader.h"
#include "halvard/runs/batch_report.h"
#include "halvard/runs/live_report.h"
#include "halvard/runs/scan_commands.h"
#include "halvard/runs/scans.h"
#include "halvard/runs/session.h"
#include "halvard/runs/walk_forward.h"
#include "test_support.h"

namespace halvard::runs {
namespace {

namespace fs = std::filesystem;

// What a run leaves that a user can see, one text.
std::string Seen(Session& s, const std::string& report) {
  const engine::StockView& v = s.view();
  return "report:\n" + report + "log:\n" + s.log().text() +
         "after: " + std::to_string(s.config.stopLossLimit) + " " +
         std::to_string(s.config.rsDayCurr) + " " +
         std::to_string(s.config.unusualVolumePercentage) + " " + v.stockSymbol + " " +
         std::to_string(v.barCount) + " " + std::to_string(v.boxCount) + " " +
         std::to_string(v.corvaneCount) + (s.tester().unusualVolumeFound ? " found" : "");
}

// One session a run, over the folder, with the list selected as the main window selects it.
std::unique_ptr<Session> Open(const fs::path& folder, const std::string& list, int jobs,
                              const std::function<void(settings::Config&)>& settings,
                              const fs::path& lists = {}) {
  auto s = std::make_unique<Session>(settings::MRegistry(folder / "unused.ini"));
  s->config.StockFilePath = folder.string();
  s->config.IncFilePath = (lists.empty() ? folder : lists).string();
  s->StartUp();
  settings(s->config);
  s->config.jobs = static_cast<int16_t>(jobs);
  s->SelectList(list);
  return s;
}

// A run over the session; a sweep groups at most `group` passes in one walk of the list.
using Run = std::function<std::string(Session&, size_t group)>;

// Every list command, each as it starts from the menus or the command line.
std::vector<std::pair<std::string, Run>> ListCommands() {
  std::vector<std::pair<std::string, Run>> runs;
  for (const ScanCommand& scan : ScanCommands()) {
    if (!scan.overList) continue;
    runs.emplace_back(scan.key, [&scan](Session& s, size_t) {
      platform::NoProgress quiet;
      return data::WatchListText(scan.run(s, quiet));
    });
  }
  runs.emplace_back("live", [](Session& s, size_t group) {
    platform::NoProgress quiet;
    LiveReport live(s, quiet, 43098);
    live.GroupPasses(group);
    ParseStopLossLevels("0.125,0.625,0.25", live.levels);
    ParseRsLevels("5,10,5", live.levels);
    live.Run({.corvane = true, .pyramidingBoxes = true, .positiveRS = true});
    return live.text() + "buy:\n" + live.buyList();
  });
  runs.emplace_back("batch", [](Session& s, size_t group) {
    platform::NoProgress quiet;
    BatchReport batch(s, quiet);
    batch.GroupPasses(group);
    ParseStopLossLevels("0.125,1.125,0.5", batch.levels);
    ParseRsLevels("3,12,9", batch.levels);
    batch.GoCommand({.corvane = true, .pyramidingBoxes = true, .positiveRS = true});
    return batch.text() + "traded:\n" + batch.tradedList();
  });
  runs.emplace_back("batch --separate", [](Session& s, size_t group) {
    platform::NoProgress quiet;
    BatchReport batch(s, quiet);
    batch.GroupPasses(group);
    ParseStopLossLevels("0.5,0.25,-0.25", batch.levels);
    ParseRsLevels("10,5,-5", batch.levels);
    batch.RunBatch({.corvane = false, .pyramidingBoxes = true, .positiveRS = false});
    return batch.text() + "traded:\n" + batch.tradedList();
  });
  runs.emplace_back("batch --walk-forward", [](Session& s, size_t) {
    platform::NoProgress quiet;
    WalkForwardReport batch(s, quiet);
    ParseStopLossLevels("0.125,0.625,0.5", batch.levels);
    ParseRsLevels("5,10,5", batch.levels);
    batch.WalkForward({.corvane = true, .pyramidingBoxes = true, .positiveRS = true}, 2);
    return batch.text();
  });
  return runs;
}

// Runs every list command with one job, each pass of a sweep walking the list itself, and then
// as the front ends run them: with several jobs and the passes in groups (of every pass, and of
// three, so that a sweep has a second group), with the engine's log kept (the desktop program)
// and without it (the command line). Each leaves what the reference leaves (but the log, when
// it is not kept).
void ExpectSameWithThreads(const fs::path& folder, const std::string& list,
                           const std::function<void(settings::Config&)>& settings) {
  for (const auto& [name, run] : ListCommands()) {
    const auto one = Open(folder, list, 1, settings);
    const std::string report = run(*one, 1);
    const std::string alone = Seen(*one, report);
    // The sweeps' engine logs (what the desktop program shows) are compared too.
    if (name == "live" || name.starts_with("batch")) {
      EXPECT_NE(one->log().text(), "") << name;
    }
    one->log().Clear();
    const std::string unlogged = Seen(*one, report);
    for (const size_t group : {ListReport::kGroupPasses, size_t{3}}) {
      for (const int jobs : {1, 2, 5}) {
        const auto logged = Open(folder, list, jobs, settings);
        EXPECT_EQ(Seen(*logged, run(*logged, group)), alone)
            << name << " with " << jobs << " jobs, groups of " << group;
        const auto many = Open(folder, list, jobs, settings);
        many->tester().KeepLog(false);
        EXPECT_EQ(Seen(*many, run(*many, group)), unlogged)
            << name << " without the log, with " << jobs << " jobs, groups of " << group;
      }
    }
  }
}

// The settings the runs are tried under: as they come, with boxes not drawn (the open box keeps
// the breakout mark of an earlier stock), with unusual volume off, and with an unusual-volume
// percentage of 0 (which the engine sets to 0.25 at its first search).
std::vector<std::function<void(settings::Config&)>> Settings() {
  return {[](settings::Config&) {}, [](settings::Config& c) { c.enableGraphUpdate = false; },
          [](settings::Config& c) {
            c.useUnusualVolume = false;
            c.buyMode = 2;
          },
          [](settings::Config& c) {
            c.unusualVolumePercentage = 0;
            c.currentView = 5;
          }};
}

TEST(StockWalk, EveryListCommandGivesTheSameOutputOnTheSamplesWithOneThreadOrMany) {
  const fs::path samples = test::SamplePrices();
  test::TempDir dir;
  for (const auto& entry : fs::directory_iterator(samples)) {
    fs::copy_file(entry.path(), dir / entry.path().filename().string());
  }
  std::vector<std::string> symbols;
  for (const auto& entry : fs::directory_iterator(dir.path())) {
    const std::string name = entry.path().stem().string();
    if (entry.path().extension() == ".txt" && name != "^IXIC") symbols.push_back(name);
  }
  std::sort(symbols.begin(), symbols.end());
  test::WriteText(dir / "all.inc", data::WatchListText(symbols));
  for (const auto& settings : Settings()) ExpectSameWithThreads(dir.path(), "all", settings);
}

// The newest `days` day lines of a price file, under its header.
std::string Newest(const std::string& file, int days) {
  platform::LineReader reader(file);
  std::string out;
  std::string_view line;
  for (int n = 0; n <= days && reader.Next(line); ++n) out.append(line).append("\r\n");
  return out;
}

TEST(StockWalk, OddShapesGiveTheSameOutputWithOneThreadOrMany) {
  const fs::path samples = test::SamplePrices();
  test::TempDir dir;
  fs::copy_file(samples / "^IXIC.txt", dir / "^IXIC.txt");
  std::vector<std::string> symbols;
  std::vector<std::string> list;
  int k = 0;
  for (const auto& entry : fs::directory_iterator(samples)) {
    const std::string name = entry.path().stem().string();
    if (entry.path().extension() != ".txt" || name == "^IXIC") continue;
    symbols.push_back(name);
  }
  std::sort(symbols.begin(), symbols.end());
  for (const std::string& name : symbols) {
    const std::string file = test::ReadText(samples / (name + ".txt"));
    // Long and short histories by turns, so a short one sits on the leftovers of a long one.
    static constexpr int kLengths[] = {0, 20, 0, 100, 137, 0, 5, 138, 0, 60};
    const int length = kLengths[k % std::size(kLengths)];
    const std::string text = length == 0 ? file : Newest(file, length);
    // One file under a name in other letters: found only by the case-blind lookup.
    std::string stored = name + ".txt";
    if (k == 7) {
      for (char& c : stored) c = static_cast<char>(std::isupper(c) ? std::tolower(c) : c);
      stored.replace(stored.size() - 3, 3, "TXT");
    }
    test::WriteText(dir / stored, text);
    list.push_back(name);
    if (k == 0) list.push_back("NOFILE1");  // (a first stock without one leaves no RS line)
    // After every whole history, the 100-day one: what it reads past its days is the bars of
    // the stock before it, a different one each time.
    if (length == 0) list.push_back(symbols[3]);
    if (k % 6 == 2) list.push_back("MISSING" + std::to_string(k));
    if (k == 11) list.push_back(symbols[3]);  // a symbol listed twice
    if (k == 4) {
      // A name long enough that its result rows are kept apart from the other rows.
      const std::string longName = name + std::string(80, 'X');
      test::WriteText(dir / (longName + ".txt"), text);
      list.push_back(longName);
    }
    ++k;
  }
  test::WriteText(dir / "odd.inc", data::WatchListText(list));
  // First a 20-day history: each pass of a sweep reads, past it, what the pass before left.
  list.insert(list.begin(), symbols[1]);
  test::WriteText(dir / "shortfirst.inc", data::WatchListText(list));
  for (const auto& settings : Settings()) {
    ExpectSameWithThreads(dir.path(), "odd", settings);
    ExpectSameWithThreads(dir.path(), "shortfirst", settings);
  }
}

TEST(StockWalk, ABadPriceFileStopsTheRunAtItsPlaceWhateverTheThreads) {
  test::TempDir dir;
  const fs::path samples = test::SamplePrices();
  fs::copy_file(samples / "^IXIC.txt", dir / "^IXIC.txt");
  fs::copy_file(samples / "A.txt", dir / "A.txt");
  fs::copy_file(samples / "AAL.txt", dir / "AAL.txt");
  test::WriteText(dir / "BAD.txt", "Date,Open,High,Low,Close,Volume\r\n2017-12-29,1,2,x,1,100\r\n");
  test::WriteText(dir / "bad.inc", data::WatchListText({"A", "AAL", "BAD", "A"}));
  std::string message[2];
  std::string seen[2];
  for (const int jobs : {1, 3}) {
    const auto s = Open(dir.path(), "bad", jobs, [](settings::Config&) {});
    platform::NoProgress quiet;
    std::string passed;
    message[jobs == 1 ? 0 : 1] = test::ErrorText([&] {
      try {
        BuySignalScan(*s, quiet);
      } catch (const Error& e) {
        passed = data::WatchListText(PassedBefore(e));
        throw;
      }
    });
    seen[jobs == 1 ? 0 : 1] = Seen(*s, passed);
  }
  EXPECT_NE(message[0].find("BAD.txt line 2: the low \"x\" is not a number"), std::string::npos)
      << message[0];
  EXPECT_EQ(message[1], message[0]);
  EXPECT_EQ(seen[1], seen[0]);
}

// Counts the progress steps and cancels after `after` of them.
class CancelAfter : public platform::Progress {
 public:
  explicit CancelAfter(int after) : after_(after) {}
  void Step(int done, int, std::string_view text) override {
    steps.push_back(std::to_string(done) + " " + std::string(text));
  }
  bool Cancelled() const override { return static_cast<int>(steps.size()) >= after_; }
  std::vector<std::string> steps;

 private:
  int after_;
};

TEST(StockWalk, ProgressAndCancelComeStockByStockInListOrder) {
  const fs::path samples = test::SamplePrices();
  std::string seen[2];
  std::vector<std::string> steps[2];
  for (const int jobs : {1, 4}) {
    const auto s = Open(
        samples, "sample", jobs, [](settings::Config&) {}, samples.parent_path() / "watchlists");
    CancelAfter progress(7);
    LiveReport live(*s, progress, 43098);
    live.Run({.corvane = true, .pyramidingBoxes = true, .positiveRS = true});
    seen[jobs == 1 ? 0 : 1] = Seen(*s, live.text());
    steps[jobs == 1 ? 0 : 1] = progress.steps;
  }
  ASSERT_EQ(steps[0].size(), 7u);
  EXPECT_EQ(steps[0].back(), "6 7/" + steps[0].back().substr(steps[0].back().find('/') + 1));
  EXPECT_EQ(steps[1], steps[0]);
  EXPECT_EQ(seen[1], seen[0]);
}

TEST(StockWalk, ASweepCancelledOrStoppedByABadFileMidwayLeavesWhatOneThreadLeaves) {
  const fs::path samples = test::SamplePrices();
  test::TempDir dir;
  for (const char* name : {"^IXIC", "A", "AAL", "AMD", "ABC"}) {
    fs::copy_file(samples / (std::string(name) + ".txt"), dir / (std::string(name) + ".txt"));
  }
  test::WriteText(dir / "five.inc", data::WatchListText({"A", "AAL", "GONE", "AMD", "ABC"}));
  test::WriteText(dir / "BAD.txt", "Date,Open,High,Low,Close,Volume\r\n2017-12-29,1,2,x,1,100\r\n");
  test::WriteText(dir / "bad.inc", data::WatchListText({"A", "AAL", "BAD", "A"}));
  // A 3 x 2 sweep, in groups of `group` passes.
  const auto sweep = [](Session& s, platform::Progress& progress, std::string& error,
                        size_t group) {
    BatchReport batch(s, progress);
    batch.GroupPasses(group);
    ParseStopLossLevels("0.125,0.375,0.125", batch.levels);
    ParseRsLevels("5,10,5", batch.levels);
    error = test::ErrorText([&] { batch.GoCommand({true, true, true}); });
    return batch.text() + "traded:\n" + batch.tradedList() +
           "rows: " + std::to_string(batch.result().sweeps.back().steps.back().rows.size());
  };
  for (const std::string list : {"five", "bad"}) {
    // Stopped in the first pass, inside later ones, at the start of one, and not at all.
    for (const int after : {3, 8, 12, 15, 29, 100}) {
      std::string error;
      const auto one = Open(dir.path(), list, 1, [](settings::Config&) {});
      CancelAfter reference(after);
      const std::string report = sweep(*one, reference, error, 1);
      const std::string alone = Seen(*one, report) + error;
      one->log().Clear();
      const std::string unlogged = Seen(*one, report) + error;
      for (const int jobs : {1, 2, 4}) {
        for (const bool log : {true, false}) {
          const auto many = Open(dir.path(), list, jobs, [](settings::Config&) {});
          many->tester().KeepLog(log);
          CancelAfter progress(after);
          const std::string together =
              Seen(*many, sweep(*many, progress, error, ListReport::kGroupPasses)) + error;
          EXPECT_EQ(together, log ? alone : unlogged)
              << list << " cancelled after " << after << ", " << jobs << (log ? ", log" : "");
          EXPECT_EQ(progress.steps, reference.steps) << list << " " << after << ", " << jobs;
        }
      }
    }
  }
}

}  // namespace
}  // namespace halvard::runs
