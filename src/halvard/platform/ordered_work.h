#pragma once
// Work over a list spread across threads, its results taken in list order. Each of `jobs`
// threads makes its own worker state and computes items ahead of the caller (at most a window
// of them); the calling thread takes item 0, 1, 2, ... as one thread would have met them. What
// carries from one item to the next (a running total, a report, the progress shown) belongs in
// take, which alone touches shared state.

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace halvard::platform {

// The cores of this machine (at least 1): the default number of jobs.
inline int MachineCores() {
  return std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
}

// compute(worker, i, result) fills the Result of item i on one of the threads, where
// makeWorker() -> Worker gave that thread its state; result is storage an earlier item used
// (so its buffers are reused rather than allocated again for every item). take(i, result)
// runs on the calling thread in order; result is null when compute threw (take then does the
// item itself, so an error surfaces where the one-thread run meets it). take returns false to
// stop: the items computed ahead are dropped. Returns false when take stopped the run. An
// exception of take ends the threads and goes on to the caller.
template <class Result, class MakeWorker, class Compute, class Take>
bool TakeInOrder(int count, int jobs, MakeWorker makeWorker, Compute compute, Take take) {
  jobs = std::max(jobs, 1);
  // Items go to the threads a few at a time, so that a list of small items does not spend its
  // time handing them over.
  const int chunk = std::clamp(count / (jobs * 16), 1, 8);
  const int window = std::max(16, 4 * chunk) * jobs;
  struct Slot {
    bool ready = false;
    bool failed = false;
    Result result;
  };
  std::vector<Slot> slots(static_cast<size_t>(window));
  std::mutex mutex;
  std::condition_variable readyOrStop;  // a slot became ready
  std::condition_variable room;         // the window moved on, or the run stops
  int next = 0;                         // the next item a thread takes up
  int taken = 0;                        // items take is done with
  bool stop = false;
  bool takerWaits = false;
  int workersWaiting = 0;

  const auto work = [&] {
    std::optional<decltype(makeWorker())> worker;
    try {
      worker.emplace(makeWorker());
    } catch (...) {
      // Without a worker every result is missing: take does each item itself.
    }
    for (;;) {
      int first = 0;
      int end = 0;
      {
        std::unique_lock lock(mutex);
        const auto claimable = [&] {
          return stop || next >= count || std::min(next + chunk, count) <= taken + window;
        };
        if (!claimable()) {
          ++workersWaiting;
          room.wait(lock, claimable);
          --workersWaiting;
        }
        if (stop || next >= count) return;
        first = next;
        end = std::min(next + chunk, count);
        next = end;
      }
      // The slots of these items are this thread's until they are marked ready: take is done
      // with what they held before.
      for (int i = first; i < end; ++i) {
        Slot& slot = slots[static_cast<size_t>(i % window)];
        slot.failed = !worker;
        if (!worker) continue;
        try {
          compute(**worker, i, slot.result);
        } catch (...) {
          slot.failed = true;
        }
      }
      bool wake = false;
      {
        const std::lock_guard lock(mutex);
        for (int i = first; i < end; ++i) slots[static_cast<size_t>(i % window)].ready = true;
        wake = takerWaits;
      }
      if (wake) readyOrStop.notify_one();
    }
  };

  std::vector<std::jthread> threads;
  // Stops and joins the threads however this function ends.
  struct Stopper {
    std::mutex& mutex;
    bool& stop;
    std::condition_variable& room;
    std::vector<std::jthread>& threads;
    ~Stopper() {
      {
        const std::lock_guard lock(mutex);
        stop = true;
      }
      room.notify_all();
      threads.clear();
    }
  } stopper{mutex, stop, room, threads};
  for (int t = 0; t < jobs; ++t) threads.emplace_back(work);

  for (int i = 0; i < count; ++i) {
    Slot& slot = slots[static_cast<size_t>(i % window)];
    {
      std::unique_lock lock(mutex);
      if (!slot.ready) {
        takerWaits = true;
        readyOrStop.wait(lock, [&] { return slot.ready; });
        takerWaits = false;
      }
    }
    if (!take(i, slot.failed ? nullptr : &slot.result)) return false;
    bool wake = false;
    {
      const std::lock_guard lock(mutex);
      slot.ready = false;
      taken = i + 1;
      wake = workersWaiting > 0;
    }
    if (wake) room.notify_all();
  }
  return true;
}

}  // namespace halvard::platform
