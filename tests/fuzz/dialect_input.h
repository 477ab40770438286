// What people can type into the fields of query and search, all the way to the statement that SQLite runs.
#pragma once

#include <cstddef>
#include <cstdint>

namespace veldrin::fuzz {

/// The bytes are the texts of the fields, one a line. Ends the process where a statement writes, is more than
/// one, or says more than its condition; where a quoted text is refused, and where `Like` errs.
void TypeInto(const uint8_t* data, size_t size);

}  // namespace veldrin::fuzz
