#include "Editor.h"

#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QSignalSpy>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

Editor::Editor()
{
    chooseMode(1);
}

void Editor::drop(const QStringList &paths) const
{
    dropFiles(u"editHint"_s, paths);
}

void Editor::paste(const QString &name, const QString &text) const
{
    QApplication::clipboard()->setText(text);
    type(name, {});
    QTest::keySequence(find<QLineEdit>(name), QKeySequence::Paste);
}

QColor Editor::colour(const QString &name) const
{
    const auto *label = find<QLabel>(name);
    return label->palette().color(label->foregroundRole());
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
    return motionFile({{"<build>", "<template>\n\t<theme>" + theme +
                                       "</theme>\n</template>\n\n"
                                       "<build>"}});
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

QStringList texts(const QByteArray &file, const QString &name)
{
    QStringList found;
    for (const QString &element : elements(file)) {
        const QString path = element.section(u'=', 0, 0);
        if (path.section(u'/', -1) == name)
            found << element.sliced(path.size() + 1);
    }
    return found;
}
