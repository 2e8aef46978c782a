#pragma once

#include "gen_helpers2/deleter.h"

#include <glib-object.h>

#include <memory>

namespace gen_helpers2 {

using text_ptr_t = std::unique_ptr<gchar, deleter_t<g_free>>;
template <class T>
using object_ptr_t = std::unique_ptr<T, deleter_t<g_object_unref>>;

} // namespace gen_helpers2
