#pragma once

#include "core/json_writer.h"

namespace velmora::cli {

using velmora::JsonWriter;

} // namespace velmora::cli
