// Databases made at random read back as they were written.
#include "unit/db/db_kit.h"
#include "unit/db/random_database.h"

#include <sstream>

using namespace velora;
using namespace velora::db_test;

namespace {

class RoundTrip : public DbTest {
protected:
  // Reads `text` as the database x and answers what a commit writes.
  std::string read_and_write(const std::string &text) {
    put("x.ddb", text);
    EXPECT_EQ(fdb_open_db("x"), 1);
    EXPECT_EQ(console().messages, "");
    EXPECT_EQ(fdb_commit_db(), 1);
    fdb_close_db();
    return get("x.ddb");
  }
};

std::multiset<std::string> lines_of(const std::string &text) {
  std::multiset<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);)
    lines.insert(line);
  return lines;
}

TEST_F(RoundTrip, OfGeneratedDatabasesIsTheIdentity) {
  for (unsigned seed = 1; seed <= 200; ++seed) {
    const std::string typed = RandomDatabase(seed).database();
    // The first write sorts functions with and without a declared arity into their sections; from
    // then on each write holds every section in reverse order.
    const std::string first = read_and_write(read_and_write(typed));
    const std::string second = read_and_write(first);
    ASSERT_EQ(read_and_write(second), first) << "seed " << seed << "\n" << typed;
    ASSERT_EQ(lines_of(second), lines_of(first)) << "seed " << seed;
    if (HasFailure())
      FAIL() << "seed " << seed << "\n" << typed;
  }
}

TEST_F(RoundTrip, OfGoldenFilesIsTheIdentity) {
  int golden = 0;
  for (const auto &entry : fs::directory_iterator(VELORA_SOURCE_DIR "/tests/golden")) {
    if (entry.path().extension() != ".ddb")
      continue;
    ++golden;
    const std::string text = get(entry.path().string());
    EXPECT_EQ(read_and_write(read_and_write(text)), text) << entry.path();
  }
  EXPECT_GE(golden, 2);
}

} // namespace
