#include "Editor.h"

#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QSignalSpy>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

void Editor::dropFiles(const QStringList &paths) const
{
    RunningProgram::dropFiles(u"editHint"_s, paths);
}

void Editor::load(const QByteArray &content, const QString &name) const
{
    dropFiles({makeFile(name, content)});
}

void Editor::paste(const QString &name, const QString &text) const
{
    QApplication::clipboard()->setText(text);
    type(name, {});
    QTest::keySequence(find<QLineEdit>(name), QKeySequence::Paste);
}

QStringList Editor::texts(const QStringList &names) const
{
    QStringList found;
    for (const QString &each : names)
        found << text(each);
    return found;
}

bool Editor::areEnabled(const QStringList &names, bool enabled) const
{
    return std::all_of(names.begin(), names.end(),
                       [&](const QString &each) { return isEnabled(each) == enabled; });
}

QColor Editor::colour(const QString &name) const
{
    const auto *label = find<QLabel>(name);
    return label->palette().color(label->foregroundRole());
}

bool Editor::waitUntilActive(const QString &window) const
{
    const auto *wanted = find<QWidget>(window);
    return QTest::qWaitFor([&] { return QApplication::activeWindow() == wanted; });
}

bool Editor::waitForAnimation() const
{
    const auto *bar = find<QProgressBar>(u"progressBarT"_s);
    const QSignalSpy values(bar, &QProgressBar::valueChanged);
    return QTest::qWaitFor([&] { return !values.isEmpty() && bar->value() == 0; });
}

QByteArray motionFile(const QList<std::pair<QByteArray, QByteArray>> &replacements)
{
    QByteArray file = motionFile();
    for (const auto &[before, after] : replacements) {
        if (!file.contains(before))
            qFatal("the fixture holds no %s", before.constData());
        file.replace(before, after);
    }
    return file;
}

QByteArray themedFile(const QByteArray &theme)
{
    const QByteArray fourthChild = "<description></description>\n\n<scene>";
    const QByteArray element = "<template>\n\t<theme>" + theme + "</theme>\n</template>\n\n";
    return motionFile({{fourthChild, element + fourthChild}});
}

QStringList elements(const QByteArray &file)
{
    QStringList found;
    QStringList path;
    QList<qsizetype> open;
    QXmlStreamReader reader(file);
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            path << reader.qualifiedName().toString();
            open << found.size();
            found << path.join(u'/') + u'=';
        } else if (reader.isCharacters() && !reader.isWhitespace()) {
            found[open.last()] += reader.text();
        } else if (reader.isEndElement()) {
            path.removeLast();
            open.removeLast();
        }
    }
    if (reader.hasError())
        qFatal("no XML any more: %s", qUtf8Printable(reader.errorString()));
    return found;
}
