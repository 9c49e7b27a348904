#include "ProjectKind.h"

#include <algorithm>

using namespace Qt::StringLiterals;

const std::array<ProjectKind, 4> &projectKinds()
{
    static const std::array<ProjectKind, 4> kinds = {{{u"moef"_s, u"mEffect.png"_s},
                                                      {u"motn"_s, u"mDocument.png"_s},
                                                      {u"moti"_s, u"mTitle.png"_s},
                                                      {u"motr"_s, u"mTransition.png"_s}}};
    return kinds;
}

const ProjectKind *projectKind(const QString &extension)
{
    const auto &kinds = projectKinds();
    const auto kind = std::find_if(kinds.begin(), kinds.end(), [&](const ProjectKind &candidate) {
        return candidate.extension == extension;
    });
    return kind == kinds.end() ? nullptr : &*kind;
}
