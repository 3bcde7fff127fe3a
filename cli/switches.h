// The generic command-line parser. Switches splits an argument vector into the program name and
// a table from each switch (dash included) to the values that follow it; values before the first
// switch go under "---noname". gmap refuses to invent missing keys when read through a const
// reference (std::logic_error). Get_param converts a switch's first value, appending a message to
// the caller's error text instead of throwing; Check_keys tells whether every switch is known.
#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "text/conversions.h"

namespace kcp {

class Switches {
 public:
  using Table = std::map<std::string, std::vector<std::string>>;

  // Copies every argument, the program name first. Throws Xerror_msg when there is none.
  Switches(const int& argc, char** const& argv);
  explicit Switches(const std::vector<std::string>& args);
  virtual ~Switches() = default;

  virtual Table Params() const;
  virtual std::string Prog_name() const;
  // A switch is a word longer than one character starting with '-' (so "-0.5" is a switch and a
  // lone "-" a value). A repeated switch keeps only the values after its last occurrence.
  virtual void Construct(std::vector<std::string> args);

 private:
  std::string prog_name_;
  Table params_;
};

// A map whose const operator[] throws instead of inserting. The destructor is not virtual.
template <typename K, typename T>
class gmap : public std::map<K, T> {
 public:
  gmap() = default;
  gmap(const std::map<K, T>& plain) : std::map<K, T>(plain) {}
  gmap(std::map<K, T>&& plain) : std::map<K, T>(std::move(plain)) {}

  virtual T& operator[](const K& key) { return std::map<K, T>::operator[](key); }
  virtual const T& operator[](const K& key) const {
    const auto found = this->find(key);
    if (found == this->end()) {
      throw std::logic_error("ERROR: gmap:: Missing Key in \n const T & gmap[] const.\n");
    }
    return found->second;
  }
};

using ParamTable = gmap<std::string, std::vector<std::string>>;

// Converts the first value of `name` (which must be in the table) into `value`. A switch without
// a value or with an unconvertible first value appends its message to `errors`, sets
// `error_flag` and leaves `value` as it was.
template <typename T>
void Get_param(T& value, const std::string& name, const ParamTable& params, std::string& errors,
               bool& error_flag) {
  const std::vector<std::string>& values = params[name];
  if (values.empty()) {
    errors += " No value is given for switch " + name + ".\n";
    error_flag = true;
    return;
  }
  bool suspicious = false;
  if (Convert_from_string(values.front(), value, suspicious) == 1) return;
  errors += " Unable to interpret the value '" + values.front() + "' for switch " + name + ".\n";
  error_flag = true;
}

// True when every key is one of the program's eleven switches ("---noname" is not one).
bool Check_keys(const ParamTable& params);

}  // namespace kcp
