/// @file
/// Reading resources from archives. A resource is named "<archive>#zip:<member>"; any characters may stand in
/// the archive's path. A missing or damaged file, archive or member gives false and leaves nothing behind.
/// Any thread.
#pragma once

#include "wx_helpers1/export.h"

#include <functional>
#include <map>
#include <string>

namespace wx_helpers1 {

/// The two halves of a resource's name; the member is empty when the name is that of a plain file.
struct WX_HELPERS1_EXPORT resource_name_t
{
    explicit resource_name_t(const std::string& file);
    std::string archive;
    std::string member;
};

/// Reads one member of an archive, or a plain file.
WX_HELPERS1_EXPORT bool read_resource(const std::string& file, std::string& bytes);

/// Reads all members of an archive in one pass, by name.
WX_HELPERS1_EXPORT bool read_archive(const std::string& archive, std::map<std::string, std::string>& members);

} // namespace wx_helpers1
