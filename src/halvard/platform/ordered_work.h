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

// compute(worker, i) returns the Result of item i on one of the threads, where
// makeWorker() -> Worker gave that thread its state. take(i, result) runs on the calling thread
// in order; result is null when compute threw (take then does the item itself, so an error
// surfaces where the one-thread run meets it). take returns false to stop: the items computed
// ahead are dropped. Returns false when take stopped the run. An exception of take ends the
// threads and goes on to the caller.
template <class Result, class MakeWorker, class Compute, class Take>
bool TakeInOrder(int count, int jobs, MakeWorker makeWorker, Compute compute, Take take) {
  const int window = 16 * std::max(jobs, 1);
  struct Slot {
    bool ready = false;
    std::optional<Result> result;
  };
  std::vector<Slot> slots(static_cast<size_t>(window));
  std::mutex mutex;
  std::condition_variable readyOrStop;  // a slot became ready
  std::condition_variable room;         // the window moved on, or the run stops
  int next = 0;                         // the next item a thread takes up
  int taken = 0;                        // items handed to take so far
  bool stop = false;

  const auto work = [&] {
    std::optional<decltype(makeWorker())> worker;
    try {
      worker.emplace(makeWorker());
    } catch (...) {
      // Without a worker every result is missing: take does each item itself.
    }
    for (;;) {
      int i = 0;
      {
        std::unique_lock lock(mutex);
        room.wait(lock, [&] { return stop || next >= count || next < taken + window; });
        if (stop || next >= count) return;
        i = next++;
      }
      std::optional<Result> result;
      if (worker) {
        try {
          result.emplace(compute(**worker, i));
        } catch (...) {
          result.reset();
        }
      }
      {
        const std::lock_guard lock(mutex);
        Slot& slot = slots[static_cast<size_t>(i % window)];
        slot.result = std::move(result);
        slot.ready = true;
      }
      readyOrStop.notify_all();
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
  for (int t = 0; t < std::max(jobs, 1); ++t) threads.emplace_back(work);

  for (int i = 0; i < count; ++i) {
    std::optional<Result> result;
    {
      std::unique_lock lock(mutex);
      Slot& slot = slots[static_cast<size_t>(i % window)];
      readyOrStop.wait(lock, [&] { return slot.ready; });
      result = std::move(slot.result);
      slot.result.reset();
      slot.ready = false;
      taken = i + 1;
    }
    room.notify_all();
    if (!take(i, result ? &*result : nullptr)) return false;
  }
  return true;
}

}  // namespace halvard::platform
