// Fuzz target of the tagged block file reader and writer: the input is read as a file's bytes
// (Windows-1252) and as program text (UTF-8, possibly ill-formed); each tree is written back,
// and the written text is read again. Any tree the reader builds must be writable.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "files/file_json.h"
#include "files/text_codec.h"
#include "fuzz_support.h"

namespace {

void ReadWriteRead(std::string_view text) {
  velmar::clsVXFileJSON file;
  file.ParseText(text);
  std::string written;
  if (!file.WriteToString(written)) __builtin_trap();
  velmar::clsVXFileJSON again;
  again.ParseText(written);
  std::string twice;
  if (!again.WriteToString(twice)) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  velmar::fuzz::Silence();
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  ReadWriteRead(velmar::Cp1252ToUtf8(bytes));
  ReadWriteRead(bytes);
  return 0;
}
