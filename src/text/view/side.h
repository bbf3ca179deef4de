#pragma once

#include "core/side.h"
