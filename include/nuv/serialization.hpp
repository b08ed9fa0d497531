// SPDX-License-Identifier: Apache-2.0
#pragma once

/// @file
/// The whole serialization framework: binary and JSON.

#include "nuv/binary_serializable.hpp"
#include "nuv/binary_serializable_type.hpp"
#include "nuv/binary_serialize_factory.hpp"
#include "nuv/json_integer.hpp"
#include "nuv/json_serializable.hpp"
#include "nuv/json_serializable_type.hpp"
#include "nuv/json_serialize_factory.hpp"
#include "nuv/json_serializer.hpp"
#include "nuv/json_string.hpp"
#include "nuv/limited_input_streambuf.hpp"
#include "nuv/limited_istream.hpp"
#include "nuv/mem_buf.hpp"
#include "nuv/scoped_json.hpp"
#include "nuv/serialization_context.hpp"
#include "nuv/serialization_exception.hpp"
#include "nuv/sized_string.hpp"
#include "nuv/uid.hpp"
#include "nuv/wrap_in_yajl.hpp"
#include "nuv/yajl_node.hpp"
#include "nuv/yajl_stream.hpp"
