#pragma once

#include "vdx/export.h"

#include <wx_helpers1/picture.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace vdxcfrw7 {

class CMessageElement;
struct line_t;

/// A picture beside a caption: one of the log's image list, or one of its own.
class VDX_EXPORT CImage
{
public:
    CImage() = default;
    CImage(int index) : m_index(index) {}
    CImage(const wx_helpers1::picture_t& picture) : m_picture(picture) {}

    /// -1: none of the image list.
    int get_index() const { return m_index; }
    const wx_helpers1::picture_t& get_picture() const { return m_picture; }

private:
    int m_index = -1;
    wx_helpers1::picture_t m_picture;
};

/// A text of an entry: its header, its body, or one of its lines.
///
/// It is a handle, as cheap as a pointer: a log of a million lines keeps their texts once and makes a caption
/// only of those that somebody asks for. It must not outlive its entry. GUI thread; texts are UTF-8, any
/// bytes are kept.
class VDX_EXPORT CCaption
{
public:
    /// Which text of an entry it stands for.
    enum class kind_t : unsigned char
    {
        header, ///< the bold first line
        body,   ///< the text below it
        line,   ///< one of its lines
        status  ///< the entry's one status line, wherever it stands
    };

    /// The alignment of lines: at the leading edge, at the top of their picture.
    static constexpr int align_leading_top = 33;

    CCaption(CMessageElement& element, kind_t kind, std::size_t line = 0)
        : m_element(&element), m_line(line), m_kind(kind)
    {
    }

    kind_t get_kind() const { return m_kind; }
    std::size_t get_line() const;

    void SetText(std::string_view text);
    /// As it was given.
    std::string GetText() const;
    /// Shows the text as HTML; for bodies.
    void UseHTML(bool use);
    /// The picture before the text; an empty one shows none.
    void SetImage(const CImage& image);
    /// Its size follows its text.
    void SetAutoSize(bool on);
    /// Whether its height follows the text; a line whose height does not has one row, cut short where it must
    /// be.
    void AdjustHeight(bool on);
    /// Only `align_leading_top` is known: other values change nothing.
    void SetTextAlignment(int alignment);
    int GetTextAlignment() const { return align_leading_top; }

private:
    line_t* get_kept_line() const;

    CMessageElement* m_element;
    std::size_t m_line;
    kind_t m_kind;
};

} // namespace vdxcfrw7
