#include "IniText.h"

#include <QDataStream>
#include <QIODevice>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// What QSettings writes for line ends and the like, and for what would end or split a value.
constexpr std::array<std::pair<char, char16_t>, 10> escapes{{{'a', u'\a'},
                                                             {'b', u'\b'},
                                                             {'f', u'\f'},
                                                             {'n', u'\n'},
                                                             {'r', u'\r'},
                                                             {'t', u'\t'},
                                                             {'v', u'\v'},
                                                             {'0', u'\0'},
                                                             {'"', u'"'},
                                                             {'\\', u'\\'}}};

constexpr QLatin1StringView variantMark{"@Variant("};
constexpr QLatin1StringView dateMark{"@DateTime("};

/// Old versions on purpose: they are the format.
QDataStream::Version streamVersion(bool isDate)
{
    return isDate ? QDataStream::Qt_5_6 : QDataStream::Qt_4_0;
}

bool isBinary(QStringView text)
{
    return text.startsWith(variantMark) || text.startsWith(dateMark);
}

QString textOf(const QVariant &value)
{
    if (!value.isValid())
        return u"@Invalid()"_s;
    if (value.typeId() == QMetaType::QString) {
        const QString text = value.toString();
        return text.startsWith(u'@') ? u'@' + text : text;
    }
    const bool isDate = value.typeId() == QMetaType::QDateTime;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(streamVersion(isDate));
    stream << value;
    return (isDate ? dateMark : variantMark) + QString::fromLatin1(bytes) + u')';
}

QVariant valueOf(const QString &text)
{
    if (!text.startsWith(u'@') || text.startsWith("@@"_L1))
        return text.startsWith(u'@') ? text.mid(1) : text;
    if (!isBinary(text) || !text.endsWith(u')'))
        return text == "@Invalid()"_L1 ? QVariant() : QVariant(text);
    const bool isDate = text.startsWith(dateMark);
    const QByteArray bytes =
        QStringView(text).mid(isDate ? dateMark.size() : variantMark.size()).toLatin1();
    QDataStream stream(bytes);
    stream.setVersion(streamVersion(isDate));
    QVariant value;
    stream >> value;
    return value;
}

void appendHex(QByteArray &escaped, QChar unit)
{
    escaped += "\\x" + QByteArray::number(unit.unicode(), 16);
}

/// One value or one item of an array as it stands in the file.
QByteArray escaped(const QString &text)
{
    const bool binary = isBinary(text);
    QByteArray result;
    result.reserve(text.size() * 3 / 2);
    bool needsQuotes = text.startsWith(u' ') || text.endsWith(u' ');
    bool wasNumber = false; // a hexadecimal digit behind it would be taken for one of its own
    for (qsizetype index = 0; index < text.size(); ++index) {
        const QChar unit = text[index];
        const auto escape = std::find_if(escapes.begin(), escapes.end(), [unit](const auto &each) {
            return each.second == unit.unicode();
        });
        needsQuotes = needsQuotes || unit == u';' || unit == u',' || unit == u'=';
        const bool isDigit = unit < u'\x80' && std::isxdigit(unit.unicode()) != 0;
        if (escape != escapes.end()) {
            result += '\\';
            result += escape->first;
            wasNumber = unit == u'\0';
        } else if (unit < u' ' || (binary && unit >= u'\x7f') || (wasNumber && isDigit)) {
            appendHex(result, unit);
            wasNumber = true;
        } else if (unit.isHighSurrogate() && index + 1 < text.size()) {
            result += QStringView(text).mid(index++, 2).toUtf8();
            wasNumber = false;
        } else {
            result += QStringView(text).mid(index, 1).toUtf8();
            wasNumber = false;
        }
    }
    return needsQuotes ? '"' + result + '"' : result;
}

/// A single item is no array to QSettings, so an array of one is a value of its own.
QByteArray escaped(const QVariant &value)
{
    const bool isArray = value.typeId() == QMetaType::QVariantList;
    const QVariantList items = isArray ? value.toList() : QVariantList();
    if (!isArray || items.size() == 1)
        return escaped(textOf(value));
    QByteArrayList texts;
    texts.reserve(items.size());
    for (const QVariant &item : items)
        texts << escaped(textOf(item));
    return texts.isEmpty() ? "@Invalid()"_ba : texts.join(", ");
}

/// Reads the items of a value, from left to right.
class Items
{
public:
    explicit Items(QByteArrayView raw) : m_raw(raw) {}

    QVariant read()
    {
        QVariantList items;
        for (;;) {
            items.append(valueOf(item()));
            if (m_place == m_raw.size())
                break;
            ++m_place; // the comma
        }
        return items.size() == 1 ? items.first() : QVariant(items);
    }

private:
    /// Up to a comma outside quotes, or the end.
    QString item()
    {
        while (m_place < m_raw.size() && (m_raw[m_place] == ' ' || m_raw[m_place] == '\t'))
            ++m_place;
        QString text;
        bool inQuotes = false;
        qsizetype bare = 0; // how much of the text no blank may be taken from
        while (m_place < m_raw.size() && (inQuotes || m_raw[m_place] != ',')) {
            const char character = m_raw[m_place];
            if (character == '"') {
                ++m_place;
                inQuotes = !inQuotes;
            } else if (character == '\\') {
                ++m_place;
                appendEscape(text);
            } else {
                appendPlain(text);
                if (!inQuotes)
                    continue;
            }
            bare = text.size();
        }
        while (text.size() > bare && (text.endsWith(u' ') || text.endsWith(u'\t')))
            text.chop(1);
        return text;
    }

    void appendPlain(QString &text)
    {
        if ((m_raw[m_place] & 0x80) == 0) {
            text += QLatin1Char(m_raw[m_place++]);
            return;
        }
        const qsizetype start = m_place;
        while (m_place < m_raw.size() && (m_raw[m_place] & 0x80) != 0)
            ++m_place;
        text += QString::fromUtf8(m_raw.sliced(start, m_place - start));
    }

    void appendEscape(QString &text)
    {
        if (m_place == m_raw.size())
            return;
        const char letter = m_raw[m_place];
        if (letter == 'x') {
            ++m_place;
            text += number(16);
        } else if (letter >= '0' && letter <= '7') {
            text += number(8);
        } else {
            ++m_place;
            const auto escape =
                std::find_if(escapes.begin(), escapes.end(),
                             [letter](const auto &each) { return each.first == letter; });
            if (escape != escapes.end())
                text += QChar(escape->second);
        }
    }

    QChar number(int base)
    {
        char16_t value = 0;
        for (; m_place < m_raw.size(); ++m_place) {
            const char digit = m_raw[m_place];
            const bool isDigit = digit >= '0' && digit <= '9';
            const int own = isDigit ? digit - '0' : (digit | 0x20) - 'a' + 10;
            if (own >= base || (!isDigit && own < 10))
                break;
            value = static_cast<char16_t>(value * base + own);
        }
        return {value};
    }

    QByteArrayView m_raw;
    qsizetype m_place = 0;
};

} // namespace

IniText::IniText(QByteArray text) : m_text(std::move(text))
{
    if (m_text.startsWith("\xEF\xBB\xBF"))
        m_text.remove(0, 3);
    if (m_text.isEmpty())
        m_text = "[General]";
    if (!m_text.endsWith('\n'))
        m_text += '\n';
}

IniText::Line IniText::find(QByteArrayView key) const
{
    Line found;
    bool isGeneral = true;
    for (qsizetype start = 0, end = 0; start < m_text.size(); start = end) {
        end = m_text.indexOf('\n', start) + 1;
        const QByteArrayView line = QByteArrayView(m_text).sliced(start, end - start);
        const qsizetype sign = line.indexOf('=');
        const QByteArrayView name = line.first(std::max<qsizetype>(sign, 0)).trimmed();
        if (line.startsWith('[')) {
            isGeneral = line.trimmed().compare("[General]", Qt::CaseInsensitive) == 0;
            if (isGeneral && found.start == found.end)
                found = {end, end, end};
        } else if (isGeneral && name == key && sign > 0) {
            found = {start, start + sign + 1, end}; // of two the last one holds
        } else if (isGeneral && !name.isEmpty() && name < key && found.start == found.end) {
            found = {end, end, end};
        }
    }
    return found;
}

QByteArrayView IniText::valueIn(const Line &line) const
{
    return QByteArrayView(m_text).sliced(line.value, line.end - line.value).trimmed();
}

QVariant IniText::value(QByteArrayView key) const
{
    const Line line = find(key);
    return line.end > line.start ? Items(valueIn(line)).read() : QVariant();
}

void IniText::setValue(QByteArrayView key, const QVariant &value)
{
    const Line line = find(key);
    const QByteArray changed = key.toByteArray() + '=' + escaped(value) + '\n';
    m_text.replace(line.start, line.end - line.start, changed);
}

void IniText::appendItem(QByteArrayView key, const QVariant &item)
{
    const Line line = find(key);
    const QByteArrayView array = valueIn(line);
    if (array.isEmpty() || array == "@Invalid()") {
        setValue(key, QVariantList{item});
        return;
    }
    // An array of one stands there as one value: without what makes it one it is its item.
    constexpr QByteArrayView mark = R"(\0\0\0\t\0\0\0\x1)";
    const qsizetype start = array.data() - m_text.constData();
    const qsizetype end = start + array.size();
    const qsizetype bytes = start + (array.startsWith('"') ? 1 : 0) + variantMark.size();
    m_text.insert(end, ", " + escaped(textOf(item)));
    if (QByteArrayView(m_text).sliced(std::min(bytes, end)).startsWith(mark))
        m_text.remove(bytes, mark.size());
}

void IniText::remove(QByteArrayView key)
{
    const Line line = find(key);
    m_text.remove(line.start, line.end - line.start);
}
