#include "ArchiveFolder.h"
#include "app/BrimvaleAppDelegate.h"
#include "platform/FileTree.h"
#include "platform/Path.h"
#include "platform/Workspace.h"

#include <QDateTime>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

void BrimvaleAppDelegate::backupOriginal()
{
    const QDateTime now = QDateTime::currentDateTime();
    dateTextField->setText(now.toString(u"MM-dd-yyyy '||' HH_mm_ss "_s) +
                           now.timeZoneAbbreviation());
    const QString folder = Path::withoutLastComponent(input1->text());
    const QString name = Path::lastComponent(input1->text());
    const QString archiveName =
        Path::withoutExtension(name) + u'-' + dateTextField->text() + u'.' + Path::extension(name);
    // Of a link, the file that it leads to: a copy of the link would keep nothing.
    std::ignore = FileTree::copy(FileTree::itemAt(input1->text()), {folder, archiveName});
    std::ignore = FileTree::move({folder, archiveName}, {archiveFolder, archiveName});
    orgButton->hide();
    wasArchived->setText(tr("Original Archived"));
    startAnimation(theTimer, 3ms, &BrimvaleAppDelegate::checkThem1);
}

void BrimvaleAppDelegate::openArchivesFolder()
{
    openAddress(QUrl::fromLocalFile(Path::expandingTilde(archiveFolder)));
}
