#pragma once

#include <QByteArray>
#include <map>

namespace veldrin::test {

/// Sets variables of the environment for the life of the object. A null value takes one away.
class Environment {
 public:
  Environment(std::initializer_list<std::pair<const char*, QByteArray>> values) {
    for (const auto& [name, value] : values) {
      Before[name] = qgetenv(name);
      Set(name, value);
    }
  }
  ~Environment() {
    for (const auto& [name, value] : Before) Set(name, value);
  }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

 private:
  static void Set(const char* name, const QByteArray& value) {
    value.isNull() ? qunsetenv(name) : qputenv(name, value);
  }

  std::map<const char*, QByteArray> Before;
};

}  // namespace veldrin::test
