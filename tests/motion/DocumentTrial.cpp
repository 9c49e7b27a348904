#include "DocumentTrial.h"

#include "SecondParser.h"
#include "motion/InspectionValues.h"
#include "motion/PrettyPrinter.h"
#include "motion/ProjectChanges.h"

#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>

#include <array>
#include <sstream>

using namespace Qt::StringLiterals;

namespace {

bool write(const QString &path, QByteArrayView content)
{
    QFile file(path);
    return file.open(QFile::WriteOnly) &&
           file.write(content.data(), content.size()) == content.size();
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

const char *problemWith(QByteArrayView file)
{
    static const QTemporaryDir folder;
    const QString path = folder.filePath(u"x.motn"_s);
    for (const Change change : changes) {
        if (!write(path, file))
            return "no file to try";
        Result<ProjectDocument> document = openProjectDocument(path);
        if (!document)
            return nullptr;
        for (const QString &text : readInspectionValues(document).duration)
            std::ignore = conformedRate(1, secondsText(text, text));
        change(*document);
        QFile unwritable;
        if (!unwritable.open(::open("/dev/null", O_RDONLY), QFile::WriteOnly | QFile::Unbuffered,
                             QFile::AutoCloseHandle) ||
            prettyPrint(*document, unwritable))
            return "a failed write was not told";
        if (!saveProjectDocument(*document, path) || !saveProjectDocument(*document, path))
            return "not saved, or not saved once more";
        const QByteArray saved = readWholeFile(path)->content;
        // It does not know UTF-16 that neither has a mark nor is declared.
        if (!libxmlAccepts(saved) && libxmlAccepts(file.toByteArray()))
            return "what was saved is no XML";
        const Result<ProjectDocument> again = openProjectDocument(path);
        if (!again || contentOf(*document) != contentOf(*again))
            return "another document was saved";
        if (!saveProjectDocument(*again, path) || readWholeFile(path)->content != saved)
            return "saved again, the file is another one";
    }
    return nullptr;
}
