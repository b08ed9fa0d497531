// SPDX-License-Identifier: Apache-2.0
#include "nuv/binary_serializable.hpp"
