#include "motion/InspectionValues.h"
#include "motion/ProjectChanges.h"
#include "tests/motion/SecondParser.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <array>
#include <sstream>

using namespace Qt::StringLiterals;

// Any bytes as a Motion file: it is opened, inspected, changed in each way, saved, opened again and
// compared. Whatever goes wrong ends the program.

namespace {

void demand(bool holds, const char *what)
{
    if (!holds)
        qFatal("%s", what);
}

/// Flushing to a disk would take most of the time.
QString scratchFolder()
{
    const QString memory = u"/dev/shm"_s;
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) +
           u"/DocumentFuzzer-XXXXXX"_s;
}

void write(const QString &path, QByteArrayView content)
{
    QFile file(path);
    demand(file.open(QIODevice::WriteOnly) &&
               file.write(content.data(), content.size()) == content.size(),
           "no file to try");
}

QByteArray read(const QString &path)
{
    QFile file(path);
    demand(file.open(QIODevice::ReadOnly), "the file is gone");
    return file.readAll();
}

/// The tree as it is in memory. A text that was set to nothing is no node any more when it is read
/// again, so neither counts.
std::string contentOf(const ProjectDocument &document)
{
    std::ostringstream content;
    document.tree().print(content, "", pugi::format_raw | pugi::format_no_empty_element_tags);
    return content.str();
}

using Change = void (*)(ProjectDocument &);

constexpr std::array<Change, 5> changes = {
    [](ProjectDocument &) {},
    [](ProjectDocument &document) { std::ignore = insertTheme(document); },
    [](ProjectDocument &document) {
        std::ignore = setTheme(document, u"<A> & \"B\" ]]>\r\n\u00e9"_s);
    },
    [](ProjectDocument &document) { std::ignore = setTheme(document, {}); },
    [](ProjectDocument &document) {
        std::ignore = conformFirstTriple(document, conformedRate(2, u"9.9 seconds"_s));
    }};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder(scratchFolder());
    static const QString path = folder.filePath(u"x.motn"_s);
    const QByteArrayView input(data, static_cast<qsizetype>(size));
    for (const Change change : changes) {
        write(path, input);
        Result<ProjectDocument> document = openProjectDocument(path);
        if (!document)
            return 0;
        for (const QString &text : readInspectionValues(document).duration)
            std::ignore = conformedRate(1, secondsText(text, text));
        change(*document);
        demand(static_cast<bool>(saveProjectDocument(*document, path)), "not saved");
        const QByteArray saved = read(path);
        // It does not know UTF-16 that neither has a mark nor is declared.
        demand(libxmlAccepts(saved) || !libxmlAccepts(input.toByteArray()),
               "what was saved is no XML");
        const Result<ProjectDocument> again = openProjectDocument(path);
        demand(again && contentOf(*document) == contentOf(*again), "another document was saved");
        demand(static_cast<bool>(saveProjectDocument(*again, path)) && read(path) == saved,
               "saved again, the file is another one");
    }
    return 0;
}
