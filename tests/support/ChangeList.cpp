#include "ChangeList.h"

#include "HomeChanges.h"
#include "history/InstallationRecord.h"
#include "platform/RunLoop.h"
#include "settings/SettingsStore.h"
#include "widgets/ProgressAnimation.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QStringList addressSchemes = {u"file"_s, u"http"_s, u"https"_s};

} // namespace

ChangeList::ChangeList(const TestHome &home) : m_home(home), m_disk(disk())
{
    m_states = states();
    qApp->installEventFilter(this);
    for (const QString &scheme : addressSchemes)
        QDesktopServices::setUrlHandler(scheme, this, "openAddress");
    setWaitLength([this](std::chrono::milliseconds asked) {
        happen(u"wait %1"_s.arg(asked.count()));
        return 1ms;
    });
}

ChangeList::~ChangeList()
{
    setWaitLength({});
    for (const QString &scheme : addressSchemes)
        QDesktopServices::unsetUrlHandler(scheme);
}

QStringList ChangeList::take()
{
    QCoreApplication::processEvents(); // windows come to the front
    collect();
    return std::exchange(m_changes, {});
}

QStringList ChangeList::parsed(const QString &text)
{
    QStringList changes;
    QStringList segment;
    const auto endSegment = [&] {
        segment.sort();
        changes << std::exchange(segment, {});
    };
    static const QRegularExpression end(u";(\\s|$)"_s);
    for (const QString &part : text.split(end, Qt::SkipEmptyParts)) {
        const QString change = part.trimmed();
        const QString verb = change.section(u' ', 0, 0);
        if (verb == u"wait" || verb == u"ticks" || verb == u"alert" || verb == u"panel") {
            endSegment();
            changes << change;
        } else if (isVerb(verb) && !change.contains(u'=')) {
            for (const QString &name : change.section(u' ', 1).split(u' '))
                segment << verb + u' ' + name;
        } else if (!change.isEmpty()) {
            segment << change;
        }
    }
    endSegment();
    return changes;
}

bool ChangeList::eventFilter(QObject *watched, QEvent *event)
{
    auto *dialog = qobject_cast<QDialog *>(watched);
    if (event->type() == QEvent::Show && dialog)
        answer(dialog);
    if (event->type() == QEvent::MetaCall && watched == qApp) // how a thread hands over
        return m_withholdsReading;
    return event->type() == QEvent::Timer && qobject_cast<ProgressAnimation *>(watched->parent());
}

void ChangeList::openAddress(const QUrl &address)
{
    m_opened << u"open "_s + address.toString();
}

void ChangeList::answer(QWidget *dialog)
{
    if (const auto *box = qobject_cast<QMessageBox *>(dialog)) {
        QStringList said = {box->text(), box->informativeText()};
        said << (box->icon() == QMessageBox::Warning ? u"warning"_s : box->windowTitle());
        for (const QAbstractButton *each : box->buttons())
            said << each->text().remove(u'&');
        happen(u"alert "_s + said.join(u" / "_s).simplified());
        QTimer::singleShot(0, box, [box] { box->buttons().constFirst()->click(); });
    } else if (auto *panel = qobject_cast<QFileDialog *>(dialog)) {
        const QStringList said = {panel->windowTitle(), panel->labelText(QFileDialog::Accept),
                                  panel->labelText(QFileDialog::LookIn)};
        happen(u"panel "_s + said.join(u" / "_s));
        QTimer::singleShot(0, panel, [this, panel] {
            const QString path = std::exchange(m_answer, {}).value_or(QString());
            panel->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(path);
            QTest::keyClick(panel, path.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
        });
    }
}

void ChangeList::happen(const QString &change)
{
    collect();
    m_changes << shortened(change).trimmed();
}

void ChangeList::collect()
{
    QStringList changes = std::exchange(m_opened, {});
    if (const QStringList lines = m_log.take(); !lines.isEmpty())
        changes << u"log "_s + lines.join(u" / "_s);
    const ControlStates before = std::exchange(m_states, states());
    const auto diskBefore = std::exchange(m_disk, disk());
    changes << differences(before, m_states) << homeChanges(diskBefore, m_disk);
    for (QString &each : changes)
        each = shortened(each).trimmed();
    changes.sort();
    m_changes << changes;
}

ControlStates ChangeList::states() const
{
    ControlStates states = controlStates(m_watchesCard);
    const std::pair<QString, QString> front{u"front"_s, {}};
    if (!states.contains(front)) // of the program, or of the desktop for a moment
        states.insert(front, m_states.value(front));
    const SettingsStore store;
    for (const QLatin1StringView key :
         {SettingsStore::theAppBackupPath, SettingsStore::theLastBackupDate,
          SettingsStore::theFolder8899, SettingsStore::installations}) {
        const QVariant value = store.object(key);
        QString text = value.toDateTime().isValid() ? u"DATE"_s : value.toString();
        for (const InstallationRecord &record : installationRecords(value))
            text += record.line + u'|';
        states.insert({u"store"_s, key}, key + u'=' + text);
    }
    return states;
}

QMap<QString, QByteArray> ChangeList::disk() const
{
    auto items = m_home.snapshot();
    items.removeIf([](auto item) { return item.key().startsWith(".config"_L1); });
    return items;
}

QString ChangeList::shortened(QString text) const
{
    static const QRegularExpression date(u"\\d{4}-\\d\\d-\\d\\d \\d\\d[:-]\\d\\d[:-]\\d\\d|"
                                         "\\d\\d-\\d\\d-\\d{4} \\|\\| \\d\\d_\\d\\d_\\d\\d \\w+"_s);
    text.replace(m_home.path(), u"~"_s).replace("Movies/Motion Templates.localized"_L1, "LIB"_L1);
    text.replace(date, u"DATE"_s).replace(".localized"_L1, ".l"_L1);
    return text.replace("; "_L1, ", "_L1).replace(u'\n', " / "_L1);
}
