// Damaged project files (tests/data/corrupt, made by scripts/make_corrupt_corpus, and a few
// very large ones made here): opening any of them returns, and either opens or says in one
// line why not. Whatever opens can be saved, the saved file opens as a current one, and saved
// again it gives the same bytes.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "files/project_file.h"
#include "project_fixture.h"

namespace velmar::testing {
namespace {

// Opens `path` over a fresh project and checks the outcome; `saveTo` receives the save.
void OpenDamaged(const fs::path& path, const fs::path& saveTo) {
  SCOPED_TRACE(path.filename().string());
  FreshProject();
  const OpenResult r = OpenProjectFile(path);
  if (!r.opened) {
    EXPECT_FALSE(r.message.empty());
    EXPECT_EQ(r.message.find_first_of("\r\n"), std::string::npos) << r.message;
    return;
  }
  fs::remove(saveTo);
  // Saved as Save As does, merged from the damaged file, with a fixed clock.
  SetProjectFileClock([] { return DateTime{2024, 3, 5, 14, 7, 0}; });
  ASSERT_EQ(SaveProjectFile(saveTo, path), 1);
  FreshProject();
  const OpenResult again = OpenProjectFile(saveTo);
  EXPECT_TRUE(again.opened) << again.message;
  // What was saved is a fixed point: opened and saved again it gives the same bytes.
  const fs::path twice = fs::path(saveTo).replace_extension(".twice.vxvl");
  ASSERT_EQ(SaveProjectFile(twice, saveTo), 1);
  EXPECT_EQ(ReadBytes(twice), ReadBytes(saveTo));
  SetProjectFileClock(nullptr);
  // The writer never writes the Waterjet block: a waterjet project keeps the block of the file
  // it came from, damaged or missing as it was there; nothing else may be reported.
  if (!again.current) {
    std::istringstream lines(again.warningText);
    for (std::string line; std::getline(lines, line);)
      EXPECT_TRUE(line.starts_with("Waterjet ") || line.starts_with("Object: ") ||
                  line.starts_with("Reading [Waterjet]") || line.starts_with("Missing: \"Waterjet\""))
          << line;
  }
}

TEST(CorruptCorpus, EveryFileOpensOrIsRefusedInOneLine) {
  TempDir dir;
  std::vector<fs::path> files;
  for (const auto& e : fs::directory_iterator(DataPath("corrupt"))) files.push_back(e.path());
  ASSERT_GE(files.size(), 100u) << "run scripts/make_corrupt_corpus";
  std::sort(files.begin(), files.end());
  for (const fs::path& f : files) OpenDamaged(f, dir / "saved.vxvl");
}

// Too large to keep in the repository: a speed list of 200000 numbers, a root list of as
// many, a description of 4 MB and an object of 100000 tags.
TEST(CorruptCorpus, HugeDocumentsOpenOrAreRefused) {
  TempDir dir;
  const std::string example = ReadBytes(ExamplePath("cargo_ship_si.vxvl"));
  std::string numbers;
  for (int i = 0; i < 200000; ++i) numbers += (i ? "," : "") + std::to_string(i % 97) + ".5";

  std::string speeds = example;
  const size_t at = speeds.find("\"Speed\": [");
  ASSERT_NE(at, std::string::npos);
  speeds.replace(at, speeds.find(']', at) - at + 1, "\"Speed\": [" + numbers + "]");

  std::string description = example;
  const size_t d = description.find("\"Description\": \"");
  ASSERT_NE(d, std::string::npos);
  description.insert(d + 16, std::string(4 << 20, 'x'));

  std::string tags = "{\"Project\": {\"ID\": \"many\"}, \"Hull\": {";
  for (int i = 0; i < 100000; ++i)
    tags += (i ? ", \"T" : "\"T") + std::to_string(i) + "\": " + std::to_string(i);
  tags += "}}";

  const std::pair<const char*, std::string> cases[] = {
      {"huge_speed_list.vxvl", speeds},
      {"huge_root_list.vxvl", "[" + numbers + "]"},
      {"huge_description.vxvl", description},
      {"huge_block.vxvl", tags},
  };
  for (const auto& [name, text] : cases) {
    WriteBytes(dir / name, text);
    OpenDamaged(dir / name, dir / "saved.vxvl");
  }
}

}  // namespace
}  // namespace velmar::testing
