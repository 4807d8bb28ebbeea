// Variants of a project for batch runs, sweeps and scripts: fields named by their property
// names ("LengthWL", "Propeller.Diameter", "Speed"), written in the project's units with their
// read checks; deep copies of the project so that each worker thread calculates its own; the
// grid of a sweep and its interleaved shards; and a runner that spreads work over threads and
// hands the results back in input order.
#pragma once

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "core/data_class.h"
#include "core/model_set.h"
#include "core/ui_hooks.h"

namespace velmar {

// ---- Copies -------------------------------------------------------------------------------

// A deep copy of a set: every member copied and the copies wired among themselves.
ModelSet CopyModelSet(const ModelSet& set);
// The project state of `app` (the open project, its reference sets, the Calculate flags and
// the mode) as a deep copy, for installing as App() of another thread.
Application CopyProjectState(const Application& app);

// ---- Fields by name -----------------------------------------------------------------------

// The data classes of a set by the names a user writes before the dot ("Hull",
// "Propeller", ...); the position in this list is a ProjectField's `member`.
std::span<const std::string_view> ProjectClassNames();
// The member `member` of `set` (nullptr when the set does not hold it).
DataClass* ProjectClass(ModelSet& set, int member);
const DataClass* ProjectClass(const ModelSet& set, int member);

struct ProjectField {
  static constexpr int kSpeed = -2;  // `member` of the speed of a one-speed variant
  std::string name;                  // "Class.Field" (or "Speed")
  int member = -1;
  int field = -1;
  bool IsSpeed() const { return member == kSpeed; }
};

// Finds "Class.Field", or "Field" alone when exactly one class has it; "Speed" is the speed.
// False with the reason in `error`.
bool FindProjectField(const ModelSet& set, std::string_view path, ProjectField& out, std::string& error);

// Writes `value` in the project's units. The field's read check decides: a value it refuses
// (or a number that is not finite) is not stored, and the word of the check is returned;
// empty when the value was taken. The speed makes the speed table one row of that speed.
std::string SetProjectField(ModelSet& set, const ProjectField& f, double value);
// The value in the project's units (the first speed for the speed), without a read check.
double GetProjectField(const ModelSet& set, const ProjectField& f);

// Hooks for runs on worker threads: a question takes its default answer and a message box
// is dropped (a run's warning comes back in its result). One object serves every thread.
class QuietHooks : public UIHooks {
 public:
  Answer Ask(std::string_view, std::string_view, bool, Answer defaultAnswer) override { return defaultAnswer; }
  void ShowMessage(std::string_view, std::string_view, int) override {}
};

// ---- Prediction ----------------------------------------------------------------------------

// Opens `path` as the calling thread's project (New, then Open; the project takes its names
// from the path, as the Open command does). False with the reason, on one line, in `why`.
bool OpenProject(const std::filesystem::path& path, std::string& why);

struct PredictionRun {
  bool ok = false;
  std::string warning;  // as the warning box shows it; empty when none was shown
};
// Calculate on the calling thread's project: in Resistance mode, and for `propulsion` then
// in Propulsion mode (drag first, as a user does). Question boxes take their default answer.
PredictionRun RunPrediction(bool propulsion);
// The columns a prediction of the mode fills, the resistance ones first, without repeats.
std::vector<int> PredictionColumns(bool propulsion);
// A warning on one line: its lines trimmed and joined by single spaces.
std::string OneLineWarning(std::string_view warning);

// ---- Sweep grid ---------------------------------------------------------------------------

// One varied field: `count` values evenly spaced from `from` to `to` (just `from` for one).
struct SweepAxis {
  ProjectField field;
  double from = 0.0, to = 0.0;
  int count = 1;
  double Value(int k) const {
    return count <= 1 ? from : from + (to - from) * static_cast<double>(k) / (count - 1);
  }
};
// "FIELD=FROM:TO:N". False with the reason in `error`.
bool ParseSweepAxis(const ModelSet& set, std::string_view text, SweepAxis& out, std::string& error);

// The full grid of the axes, the last axis varying fastest. Shard k of n (1-based) holds the
// variants k-1, k-1+n, k-1+2n, ...: interleaved, so every shard gets a fair share of slow
// and fast variants, and the shards' outputs together hold each variant once.
struct SweepGrid {
  std::vector<SweepAxis> axes;
  int shard = 1, shards = 1;

  std::int64_t Size() const;  // variants in the whole grid
  std::int64_t ShardSize() const;
  std::int64_t Variant(std::int64_t j) const { return shard - 1 + j * shards; }
  // The value of each axis in variant `index` of the whole grid.
  void Values(std::int64_t index, std::vector<double>& out) const;
};
// Calculates variant `index` of the grid on the calling thread: App().primary becomes a fresh
// copy of `base` with the axes' values set. A value that a read check refuses gives a DATA
// ERROR warning that names the field, and no run.
struct VariantRun {
  std::vector<double> values;  // of the axes
  bool calculated = false;
  PredictionRun run;
};
void RunVariant(const SweepGrid& grid, std::int64_t index, const ModelSet& base, bool propulsion,
                VariantRun& out);
// "K/N" with 1 <= K <= N. False with the reason in `error`.
bool ParseShard(std::string_view text, int& shard, int& shards, std::string& error);
// The hardware concurrency, at least 1.
int DefaultThreadCount();

// ---- Ordered parallel runner -----------------------------------------------------------------

// Runs items 0..count-1 on `threads` threads and passes each result to `sink` on the calling
// thread in item order, while the workers go on. Each thread first calls `makeWorker` once
// (to open its own copy of a project) and then the worker it returns for each item it takes.
// At most `window` results wait for the sink, which bounds the memory of a huge run. An
// exception in a worker or the sink stops the run and is rethrown here.
template <class Result>
void RunOrdered(std::int64_t count, int threads,
                const std::function<std::function<void(std::int64_t, Result&)>()>& makeWorker,
                const std::function<void(std::int64_t, Result&)>& sink, std::int64_t window = 4096) {
  if (count <= 0) return;
  threads = static_cast<int>(std::clamp<std::int64_t>(threads, 1, count));
  window = std::max<std::int64_t>(window, threads);
  std::vector<Result> slots(static_cast<size_t>(std::min(window, count)));
  std::vector<char> ready(slots.size(), 0);
  std::mutex m;
  std::condition_variable changed;
  std::int64_t next = 0, written = 0;
  bool stop = false;
  std::exception_ptr error;

  auto fail = [&](std::exception_ptr e) {
    std::lock_guard lock(m);
    if (!error) error = e;
    stop = true;
    changed.notify_all();
  };
  auto work = [&] {
    try {
      const auto worker = makeWorker();
      Result result{};
      for (;;) {
        std::int64_t i;
        {
          std::unique_lock lock(m);
          changed.wait(lock, [&] { return stop || next >= count || next < written + window; });
          if (stop || next >= count) return;
          i = next++;
        }
        worker(i, result);
        std::lock_guard lock(m);
        const size_t s = static_cast<size_t>(i % window);
        std::swap(slots[s], result);
        ready[s] = 1;
        changed.notify_all();
      }
    } catch (...) {
      fail(std::current_exception());
    }
  };
  std::vector<std::thread> pool;
  for (int t = 0; t < threads; ++t) pool.emplace_back(work);
  try {
    while (written < count) {
      const size_t s = static_cast<size_t>(written % window);
      Result result{};
      {
        std::unique_lock lock(m);
        changed.wait(lock, [&] { return stop || ready[s]; });
        if (stop) break;
        std::swap(result, slots[s]);
        ready[s] = 0;
      }
      sink(written, result);
      std::lock_guard lock(m);
      ++written;
      changed.notify_all();
    }
  } catch (...) {
    fail(std::current_exception());
  }
  for (std::thread& t : pool) t.join();
  if (error) std::rethrow_exception(error);
}

}  // namespace velmar
