// The general error of the program. Every subsystem throws it with a finished message (prefix
// and line breaks included); the driver prints what() unaltered and ends the run. The empty
// message is used on purpose after the usage and help texts.
#pragma once

#include <stdexcept>
#include <string>

namespace kcp {

class Xerror_msg : public std::logic_error {
 public:
  explicit Xerror_msg(const std::string& message) : std::logic_error(message) {}
};

}  // namespace kcp
