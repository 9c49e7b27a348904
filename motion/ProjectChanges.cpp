#include "ProjectChanges.h"

#include <iterator>
#include <set>
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

bool isInsideOneOf(const std::set<pugi::xml_node> &elements, pugi::xml_node node)
{
    do
        node = node.parent();
    while (node && !elements.contains(node));
    return !node.empty();
}

void setText(pugi::xml_node element, const QByteArray &text)
{
    element.remove_children();
    if (!text.isEmpty())
        element.text().set(text.constData());
}

/// Gives the elements their texts, one after the other. An element that stands inside an earlier
/// one goes with that one's old content, so it is left alone.
void setTexts(const std::vector<pugi::xml_node> &elements, const QStringList &texts)
{
    std::set<pugi::xml_node> earlier;
    std::vector<std::pair<pugi::xml_node, QByteArray>> changes;
    for (std::size_t index = 0; index < elements.size(); ++index) {
        if (!isInsideOneOf(earlier, elements[index]))
            changes.emplace_back(elements[index], storable(texts[static_cast<qsizetype>(index)]));
        earlier.insert(elements[index]);
    }
    for (const auto &[element, text] : changes)
        setText(element, text);
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
    setTexts(themes, QStringList(static_cast<qsizetype>(themes.size()), text));
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
        setTexts({rates.front(), durations.front(), flags.front()},
                 {rate->frameRate, rate->frames, u"0"_s});
    }
    matches.moreTriples = flags.size() > 1;
    if (!matches.moreTriples && (rates.size() > 1 || durations.size() > 1)) {
        // The later rounds look anew, for what the first one has not taken away.
        const auto left = elementsNamed(document, {"duration", "NTSC"});
        matches.moreTriples = !left[1].empty() && (durations.size() > 1 || !left[0].empty());
    }
    return matches;
}
