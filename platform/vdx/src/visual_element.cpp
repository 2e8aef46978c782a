#include "vdx/visual_element.h"

namespace vdxcfrw7 {

CVisualElement::~CVisualElement() = default;

void CVisualElement::Show(bool show)
{
    if (show == m_shown)
        return;
    m_shown = show;
    Changed();
}

} // namespace vdxcfrw7
