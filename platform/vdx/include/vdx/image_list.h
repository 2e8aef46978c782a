#pragma once

#include <wx_helpers1/picture.h>

namespace vdxc7 {

/// Pictures that elements name by their index.
class IImageList
{
public:
    /// Adds a picture at the end, an empty one too, and returns its index.
    virtual int Add(const wx_helpers1::wxStaticPicture& picture) = 0;
    virtual int GetCount() const = 0;
    /// An empty picture for an index that there is not.
    virtual wx_helpers1::wxStaticPicture Get(int index) const = 0;

protected:
    ~IImageList() = default;
};

} // namespace vdxc7
