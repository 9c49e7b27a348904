#include "ProjectChanges.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int templateIndex = 3;

/// The text in UTF-8, without what XML 1.0 cannot hold: control characters, halves of surrogate
/// pairs and two code points that are no characters.
QByteArray storable(const QString &text)
{
    QString kept;
    for (qsizetype index = 0; index < text.size(); ++index) {
        const QChar unit = text[index];
        if (unit.isHighSurrogate() && index + 1 < text.size() && text[index + 1].isLowSurrogate()) {
            kept += unit;
            kept += text[++index];
        } else if (unit >= u' ' ? !unit.isSurrogate() && unit < u'\uFFFE'
                                : u"\t\n\r"_s.contains(unit)) {
            kept += unit;
        }
    }
    return kept.toUtf8();
}

void setText(pugi::xml_node element, const QByteArray &text)
{
    element.remove_children();
    element.text().set(text.constData());
}

bool isInside(pugi::xml_node element, pugi::xml_node other)
{
    do
        element = element.parent();
    while (element && element != other);
    return !element.empty();
}

/// Gives the elements their texts. One that stands inside another one goes with that one's content.
void setTexts(const std::vector<std::pair<pugi::xml_node, QString>> &texts)
{
    std::vector<std::pair<pugi::xml_node, QString>> staying;
    std::copy_if(texts.begin(), texts.end(), std::back_inserter(staying), [&](const auto &text) {
        return std::none_of(texts.begin(), texts.end(),
                            [&](const auto &other) { return isInside(text.first, other.first); });
    });
    for (const auto &[element, text] : staying)
        setText(element, storable(text));
}

} // namespace

Outcome insertTheme(ProjectDocument &document)
{
    pugi::xml_node root = document.root();
    const auto children = root.children();
    if (std::distance(children.begin(), children.end()) < templateIndex)
        return Failure{u"the root has fewer than %1 children"_s.arg(templateIndex)};
    root.set_name("ozml");
    const auto following = std::next(children.begin(), templateIndex);
    pugi::xml_node templateElement = following == children.end()
                                         ? root.append_child("template")
                                         : root.insert_child_before("template", *following);
    templateElement.append_child("theme");
    return {};
}

int setTheme(ProjectDocument &document, const QString &text)
{
    const std::vector<pugi::xml_node> themes = elementsNamed(document, {"theme"}).front();
    const QByteArray stored = storable(text);
    // From the last to the first: one that stands inside another one goes with that one's content.
    std::for_each(themes.rbegin(), themes.rend(), [&](auto theme) { setText(theme, stored); });
    return static_cast<int>(themes.size());
}

ConformMatches conformFirstTriple(ProjectDocument &document,
                                  const std::optional<ConformedRate> &rate)
{
    const auto found = elementsNamed(document, {"frameRate", "duration", "NTSC"});
    const auto &[rates, durations, flags] = std::tie(found[0], found[1], found[2]);
    ConformMatches matches;
    matches.anyPair = !rates.empty() && !durations.empty();
    matches.anyTriple = matches.anyPair && !flags.empty();
    if (!matches.anyTriple)
        return matches;
    if (rate) {
        setTexts({{rates.front(), rate->frameRate},
                  {durations.front(), rate->frames},
                  {flags.front(), u"0"_s}});
    }
    matches.moreTriples = flags.size() > 1;
    if (!matches.moreTriples && (rates.size() > 1 || durations.size() > 1)) {
        // The later rounds look anew, for what the first one has not taken away.
        const auto left = elementsNamed(document, {"duration", "NTSC"});
        matches.moreTriples = !left[1].empty() && (durations.size() > 1 || !left[0].empty());
    }
    return matches;
}
