// Runs a fuzz target over files: the corpus in every test run, or an input that made it fail.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

int main(int argc, char **argv) {
  std::vector<std::string> names;
  for (int i = 1; i < argc; ++i) // the target may change to a folder of its own
    names.push_back(std::filesystem::absolute(argv[i]).string());
  for (const std::string &name : names) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> file(std::fopen(name.c_str(), "rb"),
                                                                std::fclose);
    if (!file) {
      std::fprintf(stderr, "cannot read %s\n", name.c_str());
      return 1;
    }
    std::vector<std::uint8_t> data;
    for (int c; (c = std::getc(file.get())) != EOF;)
      data.push_back(static_cast<std::uint8_t>(c));
    LLVMFuzzerTestOneInput(data.data(), data.size());
  }
  return argc > 1 ? 0 : 1;
}
