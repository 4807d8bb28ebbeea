// velmar-cli report end to end on the cargo-ship example: each output format carries the
// captions and a value of the results, the PDF as pdftotext reads it; wrong kinds and
// extensions are usage errors.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "../cli/cli_run.h"
#include "../core/test_support.h"

namespace {

using velmar::testing::Cli;
using velmar::testing::TempDir;

const std::string kCargo = velmar::testing::ExamplePath("cargo_ship_si.vxvl").string();

// The total resistance of the cargo ship at its design speed of 25 kt, as velmar-cli calc
// prints it.
constexpr const char* kDesignTotalDrag = "2206.21";

std::string Extracted(const std::string& file, const std::string& ext) {
  if (ext != ".pdf") return velmar::testing::ReadBytes(file);
  std::string out;
  FILE* p = popen(("pdftotext -layout '" + file + "' - 2>/dev/null").c_str(), "r");
  char buf[4096];
  size_t n;
  while ((n = fread(buf, 1, sizeof buf, p)) > 0) out.append(buf, n);
  pclose(p);
  return out;
}

TEST(ReportCommand, EveryFormatCarriesCaptionsAndResults) {
  std::vector<std::string> exts = {".html", ".csv", ".rtf", ".txt"};
#if VELMAR_HAVE_RENDER
  if (std::system("pdftotext -v >/dev/null 2>&1") == 0) exts.push_back(".pdf");
#endif
  TempDir dir;
  for (const std::string& ext : exts) {
    SCOPED_TRACE(ext);
    const std::string out = (dir / ("r" + ext)).string();
    const auto r =
        Cli("report " + kCargo + " --kind full-resistance --symbols --date \"2024-03-05 14:07\" -o " + out);
    ASSERT_EQ(r.code, 0) << r.out;
    const std::string text = Extracted(out, ext);
    for (const char* s :
         {"Prediction results", "RESISTANCE AND EFFECTIVE POWER", "Hull data", "Wind",
          "Viscous/frictional resistance coefficient ratio [dynamic form factor]", kDesignTotalDrag})
      EXPECT_NE(text.find(s), std::string::npos) << s;
    // The frame's heading and footer are not part of the CSV tables.
    EXPECT_EQ(text.find("20240305-1407") != std::string::npos, ext != ".csv");
  }
}

TEST(ReportCommand, RefusesUnknownKindsAndOutputs) {
  TempDir dir;
  for (const std::string& args :
       {"--kind speed -o " + (dir / "r.txt").string(), "--kind data -o " + (dir / "r.docx").string()}) {
    SCOPED_TRACE(args);
    EXPECT_EQ(Cli("report " + kCargo + " " + args).code, 2);
  }
}

}  // namespace
