#pragma once

#include "client/record_decoder.h"
#include "tools/commands.h"

namespace tools {

// Whether the record passes all filters of the options. Throws std::runtime_error for a call that does
// not exist.
bool Passes(const koru::client::Record& record, const RecordsOptions& options);
void CheckCallNames(const RecordsOptions& options);

} // namespace tools
