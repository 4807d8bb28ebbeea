// Benchmarks of the project file: open and save of the largest example project, and the
// parse of a one-megabyte document of blocks, numbers, texts and lists.
#include <random>
#include <string>

#include "bench_support.h"
#include "files/file_json.h"

namespace velmar {
namespace {

namespace fs = std::filesystem;

// The largest project among the examples.
fs::path LargestExample() {
  const fs::path dir = bench::Examples();
  fs::path best;
  std::error_code ec;
  for (const auto& e : fs::directory_iterator(dir, ec))
    if (e.path().extension() == ".vxvl" && (best.empty() || e.file_size() > fs::file_size(best)))
      best = e.path();
  return best;
}

fs::path TempFile(const char* name) {
  return fs::temp_directory_path() /
         (std::string("velmar-bench-") + std::to_string(std::random_device{}()) + name);
}

void BM_OpenLargestExample(benchmark::State& state) {
  const fs::path path = LargestExample();
  if (path.empty()) return state.SkipWithError("no example project found");
  for (auto _ : state) {
    NewProject();
    benchmark::DoNotOptimize(OpenProjectFile(path).opened);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                          static_cast<int64_t>(fs::file_size(path)));
}
BENCHMARK(BM_OpenLargestExample)->Unit(benchmark::kMicrosecond);

// Each save merges into the file the previous one wrote, as a repeated Save does.
void BM_SaveLargestExample(benchmark::State& state) {
  const fs::path path = LargestExample();
  if (path.empty()) return state.SkipWithError("no example project found");
  NewProject();
  OpenProjectFile(path);
  const fs::path out = TempFile(".vxvl");
  for (auto _ : state) benchmark::DoNotOptimize(SaveProjectFile(out));
  std::error_code ec;
  fs::remove(out, ec);
}
BENCHMARK(BM_SaveLargestExample)->Unit(benchmark::kMicrosecond);

// About 1 MB: blocks of 40 tags each, with numbers, label texts and ten-element lists.
std::string MegabyteDocument() {
  std::string doc = "{";
  std::mt19937 rng(7);
  std::uniform_real_distribution<double> value(-1e4, 1e4);
  for (int block = 0; doc.size() < 1'000'000; ++block) {
    doc += (block ? ",\r\n" : "\r\n") + std::string("\t\"Block") + std::to_string(block) + "\": {";
    for (int tag = 0; tag < 40; ++tag) {
      doc += (tag ? ",\r\n\t\t\"" : "\r\n\t\t\"") + std::string("Tag") + std::to_string(tag) + "\": ";
      if (tag % 4 == 0) {
        doc += "\"Label text " + std::to_string(tag) + "\"";
      } else if (tag % 4 == 1) {
        doc += "[";
        for (int i = 0; i < 10; ++i) doc += (i ? "," : "") + std::to_string(value(rng));
        doc += "]";
      } else {
        doc += std::to_string(value(rng));
      }
    }
    doc += "\r\n\t}";
  }
  return doc + "\r\n}\r\n";
}

void BM_Parse1MB(benchmark::State& state) {
  const std::string doc = MegabyteDocument();
  for (auto _ : state) {
    clsVXFileJSON file;
    file.ParseText(doc);
    benchmark::DoNotOptimize(file.ParsedObject());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(doc.size()));
}
BENCHMARK(BM_Parse1MB)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmar
