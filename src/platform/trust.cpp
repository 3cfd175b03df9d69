// The state of the session's rights, and the question. Holds no roots; asked by the dispatcher of
// built-ins and by the loading of files.
#include "platform/trust.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <system_error>
#include <vector>

#include "platform/file_calls.h"
#include "platform/response.h"
#include "platform/sha256.h"
#include "platform/trusted_sums.h"

namespace velora {

bool gTrustAll = false;
bool gPersonAnswers = false;
int gRefusals = 0;

namespace {

// A database that is not trusted and whose code may be in memory.
struct Stranger {
  std::string file;
  std::string sum;
};

struct Rights {
  std::vector<Stranger> strangers;
  bool closed = false;            // they have left the memory; settled at the return point
  std::set<std::string> consents; // paths that the user allowed further writing to
  std::string last_refusal;       // so that a loop of refusals is told in one line
};
Rights rights;

std::vector<std::string> trusted_folders;

bool comes_with_program(const std::string &file) {
  const std::string path = resolved_path(file);
  return std::any_of(trusted_folders.begin(), trusted_folders.end(),
                     [&](const std::string &folder) { return lies_in(path, folder); });
}

} // namespace

std::string resolved_path(const std::string &name) {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::path absolute = fs::absolute(name, error);
  const fs::path resolved = fs::weakly_canonical(absolute, error);
  return (error ? absolute : resolved).string();
}

bool lies_in(const std::string &path, const std::string &folder) {
  const std::filesystem::path whole = resolved_path(folder);
  // A path with nothing behind its last separator ends in an empty part.
  const std::filesystem::path base = whole.has_filename() ? whole : whole.parent_path();
  const std::filesystem::path other(path);
  return std::mismatch(base.begin(), base.end(), other.begin(), other.end()).first == base.end();
}

void trust_folder(const std::string &folder) {
  if (!folder.empty())
    trusted_folders.push_back(folder);
}

void note_database_read(const std::string &file, std::string_view text) {
  const std::string sum = sha256(text);
  if (gTrustAll || is_trusted_sum(sum) || comes_with_program(file))
    return;
  // What was allowed before is no consent for what a stranger does.
  rights.consents.clear();
  rights.strangers.push_back({file, sum});
  rights.closed = false;
}

void note_databases_closed() {
  rights.closed = true;
}

void note_own_text(std::string_view text) {
  if (!session_is_restricted())
    trust_sum(sha256(text));
}

void settle_trust() {
  rights.last_refusal.clear();
  if (!rights.closed)
    return;
  rights.closed = false;
  rights.strangers.clear();
  rights.consents.clear();
}

bool session_is_restricted() {
  return !gTrustAll && !rights.strangers.empty();
}

std::string restricting_databases() {
  std::string names;
  for (const Stranger &stranger : rights.strangers)
    names += (names.empty() ? "" : ", ") + stranger.file;
  return names;
}

std::string why_restricted() {
  return restricting_databases() +
         (rights.strangers.size() == 1 ? " is not trusted" : " are not trusted");
}

void lift_restriction() {
  for (const Stranger &stranger : rights.strangers)
    trust_sum(stranger.sum);
  rights.strangers.clear();
  rights.consents.clear();
}

bool refuse_effect(const std::string &why) {
  ++gRefusals;
  if (why == rights.last_refusal)
    return false;
  rights.last_refusal = why;
  orvek_error("Refused: " + why + "\n");
  return true;
}

namespace {

// What is wanted, with the place; a place away from the stranger's own folder is pointed at.
std::string described(const EffectWish &wish) {
  if (wish.path.empty())
    return wish.what;
  const bool at_home = lies_in(wish.path, folder_of(rights.strangers.front().file));
  return wish.what + " " + wish.path + (at_home ? "" : " (outside of its folder)");
}

bool allowed_by_user(const EffectWish &wish) {
  constexpr int kOnce = 2;
  constexpr int kTrust = 3;
  const int answer = PromptUser(format_text(rights.strangers.size() == 1
                                                ? "The database %s. It wants to %s."
                                                : "The databases %s. One of them wants to %s.",
                                            why_restricted().c_str(), described(wish).c_str()),
                                {"Refuse", "Once", "Trust This Database"});
  if (answer == kTrust)
    lift_restriction();
  if (answer == kOnce && wish.remember)
    rights.consents.insert(wish.path);
  return answer == kOnce || answer == kTrust;
}

} // namespace

bool effect_is_allowed(const EffectWish &wish) {
  if (!session_is_restricted() || (wish.remembered && rights.consents.contains(wish.path)))
    return true;
  if (gPersonAnswers && allowed_by_user(wish))
    return true;
  const std::string why = "to " + described(wish) + "; " + why_restricted();
  if (refuse_effect(why) && !gPersonAnswers)
    show_note("note: --trust or :trust trusts it");
  return false;
}

} // namespace velora
