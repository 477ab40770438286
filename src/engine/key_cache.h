// The lists of keys that were read last, for as long as nobody has changed the catalogue: the way back to a
// folder of a million photos need not read them again.
#pragma once

#include <QString>
#include <list>
#include <memory>
#include <vector>

namespace veldrin::engine {

/// A list of keys in ascending order, each once. Shared by the recordset that shows it and by the cache.
using KeyList = std::shared_ptr<const std::vector<int>>;

class KeyCache {
 public:
  /// The list that was kept under this name at this version of the catalogue; null when there is none.
  KeyList Find(const QString& name, quint64 version);
  /// Lists of another version go, and the oldest ones beyond the room there is.
  void Keep(const QString& name, quint64 version, const KeyList& keys);

 private:
  struct Entry {
    QString Name;
    KeyList Keys;
  };
  void DropOthers(quint64 version);

  quint64 Version = 0;
  std::list<Entry> Entries;  ///< the last used first
};

}  // namespace veldrin::engine
