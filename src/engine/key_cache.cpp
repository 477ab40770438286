#include "engine/key_cache.h"

#include <algorithm>

namespace veldrin::engine {

namespace {

// In keys of four bytes each: the whole catalogue and its largest folders for most people, 12 MB at the most.
constexpr size_t Room = 3'000'000;
constexpr size_t MostLists = 16;

}  // namespace

void KeyCache::DropOthers(quint64 version) {
  if (version != Version) Entries.clear();
  Version = version;
}

KeyList KeyCache::Find(const QString& name, quint64 version) {
  DropOthers(version);
  const auto found = std::ranges::find(Entries, name, &Entry::Name);
  if (found == Entries.end()) return nullptr;
  Entries.splice(Entries.begin(), Entries, found);
  return found->Keys;
}

void KeyCache::Keep(const QString& name, quint64 version, const KeyList& keys) {
  DropOthers(version);
  if (keys->size() > Room) return;
  Entries.push_front({name, keys});
  if (Entries.size() > MostLists) Entries.pop_back();
  size_t kept = 0;
  for (auto entry = Entries.begin(); entry != Entries.end();) {
    kept += entry->Keys->size();
    entry = kept > Room ? Entries.erase(entry) : std::next(entry);
  }
}

}  // namespace veldrin::engine
