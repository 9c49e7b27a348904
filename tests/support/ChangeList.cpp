#include "ChangeList.h"

#include "history/InstallationRecord.h"
#include "platform/RunLoop.h"
#include "settings/SettingsStore.h"
#include "widgets/DateField.h"
#include "widgets/SegmentedControl.h"
#include "widgets/Spinner.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDesktopServices>
#include <QFileDialog>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QStackedWidget>
#include <QTableView>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QStringList addressSchemes = {u"file"_s, u"http"_s, u"https"_s};

/// What a change to true and one to false are called; every other kind is told by its value.
const QMap<QString, std::pair<QString, QString>> verbs = {
    {u"enabled"_s, {u"on "_s, u"off "_s}},        {u"shown"_s, {u"show "_s, u"hide "_s}},
    {u"checked"_s, {u"check "_s, u"uncheck "_s}}, {u"running"_s, {u"run "_s, u"rest "_s}},
    {u"turning"_s, {u"turn "_s, u"stop "_s}},     {u"lit"_s, {u"light "_s, u"dim "_s}},
    {u"ring"_s, {u"ring "_s, u"unring "_s}}};

/// Menu items that stand for a control: they can be chosen while it can be, at any time.
const QMap<QString, QString> followers = {{u"doOpenItem"_s, u"addButton"_s},
                                          {u"openFileItem"_s, u"oFile"_s},
                                          {u"moveAndCloseItem"_s, u"mSendButton"_s},
                                          {u"createCategoryItem"_s, u"mNewCatButton"_s},
                                          {u"clearInputsItem"_s, u"clearButton"_s},
                                          {u"backupOriginalItem"_s, u"orgButton"_s},
                                          {u"raiseRenameSheetItem"_s, u"renameButton"_s},
                                          {u"clearEditorItem"_s, u"tClearButton"_s},
                                          {u"writeToFileItem"_s, u"tClearButton"_s},
                                          {u"addElementsItem"_s, u"setButton"_s},
                                          {u"conformItem"_s, u"conformButton"_s}};

QString word(bool is)
{
    return is ? u"yes"_s : u"no"_s;
}

bool isOurs(const QObject *object)
{
    const QString name = object->objectName();
    return !name.isEmpty() && !name.startsWith("qt_"_L1);
}

/// What is told of a template follows the disk in its own time; a test of its own waits for it.
bool isTold(const QWidget *control)
{
    const QWidget *parent = control->parentWidget();
    return parent && (parent->objectName() == u"installHint" ||
                      parent->objectName() == u"catForecast" || isTold(parent));
}

/// The name of the control, or of that which it is a part of.
QString nameOf(const QObject *object)
{
    while (object && !isOurs(object))
        object = object->parent();
    return object ? object->objectName() : QString();
}

QString pictureName(const QLabel *label)
{
    const QPixmap shown = label->pixmap(Qt::ReturnByValue);
    for (const char *kind : {"mEffect.png", "mDocument.png", "mTitle.png", "mTransition.png"}) {
        const QIcon icon(u":/"_s + QLatin1StringView(kind));
        if (icon.pixmap(label->size(), label->devicePixelRatioF()).toImage() == shown.toImage())
            return QLatin1StringView(kind);
    }
    return u"a picture"_s;
}

QString rows(const QAbstractItemModel *model)
{
    QString lines;
    for (int row = 0; model && row < model->rowCount(); ++row)
        lines += model->index(row, 0).data().toString() + u'|';
    return lines;
}

QString valueOf(const QWidget *control)
{
    if (const auto *date = qobject_cast<const DateField *>(control))
        return date->text().isEmpty() ? QString() : u"DATE"_s;
    if (const auto *label = qobject_cast<const QLabel *>(control))
        return label->pixmap(Qt::ReturnByValue).isNull() ? label->text() : pictureName(label);
    if (const auto *list = qobject_cast<const QComboBox *>(control))
        return QString::number(list->currentIndex());
    if (const auto *pages = qobject_cast<const QStackedWidget *>(control))
        return QString::number(pages->currentIndex());
    if (const auto *segments = qobject_cast<const SegmentedControl *>(control))
        return QString::number(segments->selectedSegment());
    if (const auto *table = qobject_cast<const QTableView *>(control))
        return rows(table->model());
    if (control->inherits("QProgressBar"))
        return {};
    return control->isWindow() ? control->windowTitle() : control->property("text").toString();
}

/// A drop hint that glows under the pointer, by its fill near the edge.
bool isLit(QWidget *hint)
{
    const QColor fill = hint->grab(QRect(4, hint->height() / 2, 1, 1)).toImage().pixelColor(0, 0);
    return fill.hsvSaturation() > 12;
}

bool startsWithFolder(const QString &path, const QString &folder)
{
    return path.startsWith(folder) && (path.size() == folder.size() || path[folder.size()] == u'/');
}

/// A file or a whole tree, by the paths inside of it.
QMap<QString, QByteArray> tree(const QMap<QString, QByteArray> &disk, const QString &root)
{
    QMap<QString, QByteArray> items;
    for (auto item = disk.lowerBound(root); item != disk.end(); ++item) {
        if (startsWithFolder(item.key(), root))
            items.insert(item.key().mid(root.size()), item.value());
    }
    return items;
}

} // namespace

ChangeList::ChangeList(const TestHome &home) : m_home(home)
{
    qApp->installEventFilter(this);
    for (const QString &scheme : addressSchemes)
        QDesktopServices::setUrlHandler(scheme, this, "openAddress");
    setWaitLength([this](std::chrono::milliseconds asked) {
        collect();
        m_changes << u"wait %1"_s.arg(asked.count());
        return 20ms;
    });
    collect();
    m_changes.clear();
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

void ChangeList::forgetStates()
{
    for (auto item = m_controls.begin(); item != m_controls.end(); ++item) {
        if (const QString &kind = item.key().first; verbs.contains(kind))
            item.value() = word(kind == u"enabled"_s || kind == u"shown"_s);
    }
}

QStringList ChangeList::parsed(const QString &text)
{
    QStringList changes;
    QStringList segment;
    const auto endSegment = [&] {
        segment.sort();
        changes << std::exchange(segment, {});
    };
    for (const QString &part : text.split(u';', Qt::SkipEmptyParts)) {
        const QString change = part.trimmed();
        const QString verb = change.section(u' ', 0, 0);
        const bool isList = std::any_of(verbs.begin(), verbs.end(), [&](const auto &each) {
            return verb + u' ' == each.first || verb + u' ' == each.second;
        });
        if (verb == u"wait" || verb == u"alert" || verb == u"panel") {
            endSegment();
            changes << change;
        } else if (isList && !change.contains(u'=')) {
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
    return false;
}

void ChangeList::openAddress(const QUrl &address)
{
    m_happened << u"open "_s + address.toString();
}

void ChangeList::answer(QWidget *dialog)
{
    if (const auto *box = qobject_cast<QMessageBox *>(dialog)) {
        collect();
        QStringList said = {box->text(), box->informativeText()};
        said << (box->icon() == QMessageBox::Warning ? u"warning"_s : box->windowTitle());
        for (const QAbstractButton *each : box->buttons())
            said << each->text().remove(u'&');
        m_changes << u"alert "_s + shortened(said.join(u" / "_s)).simplified();
        QTimer::singleShot(0, box, [box] { box->buttons().constFirst()->click(); });
    } else if (auto *panel = qobject_cast<QFileDialog *>(dialog)) {
        collect();
        const QStringList said = {panel->windowTitle(), panel->labelText(QFileDialog::Accept),
                                  panel->labelText(QFileDialog::LookIn)};
        m_changes << u"panel "_s + shortened(said.join(u" / "_s));
        QTimer::singleShot(0, panel, [this, panel] {
            const QString path = std::exchange(m_answer, {}).value_or(QString());
            panel->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(path);
            QTest::keyClick(panel, path.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
        });
    }
}

void ChangeList::collect()
{
    QStringList changes = std::exchange(m_happened, {});
    if (const QStringList lines = m_log.take(); !lines.isEmpty())
        changes << u"log "_s + lines.join(u" / "_s);
    const State now = controls();
    for (auto item = now.begin(); item != now.end(); ++item) {
        const auto &[kind, name] = item.key();
        // What was built only now has just its windows to tell, and the focus in them.
        const QString missing = kind == u"window"_s ? word(false) : item.value();
        const QString before = m_controls.value(item.key(), kind == u"focus"_s ? u""_s : missing);
        if (item.value() == before)
            continue;
        const QString verb = kind == u"window"_s ? u"shown"_s : kind;
        if (verbs.contains(verb))
            changes << (item.value() == u"yes" ? verbs[verb].first : verbs[verb].second) + name;
        else if (kind == u"focus"_s && item.value().isEmpty())
            changes << u"unfocus "_s + name;
        else
            changes << (kind == u"value"_s    ? name + u'='
                        : kind == u"colour"_s ? name + u' '
                                              : kind + u' ') +
                           item.value();
    }
    m_controls = now;
    changes << changesOnDisk();
    for (QString &each : changes)
        each = shortened(each).trimmed();
    changes.sort();
    m_changes << changes;
}

ChangeList::State ChangeList::controls() const
{
    State state;
    const auto put = [&](const QString &kind, const QObject *object, const QString &value) {
        state.insert({kind, object->objectName()}, value);
    };
    QMap<QString, bool> canBeUsed;
    QList<const QAction *> items;
    for (QWidget *each : QApplication::allWidgets()) {
        const QWidget *window = each->window();
        for (const QAction *item : each->actions())
            items << item;
        if (!isOurs(each) || isTold(each) || qobject_cast<const QFileDialog *>(window) ||
            window->inherits("QMenu"))
            continue;
        canBeUsed[each->objectName()] = each->isVisible() && each->isEnabled();
        put(u"enabled"_s, each, word(each->isEnabled()));
        put(u"value"_s, each, valueOf(each));
        if (each->isWindow()) {
            put(u"window"_s, each, word(each->isVisible()));
            put(u"focus"_s, each, nameOf(each->focusWidget()));
        } else if (!qobject_cast<QStackedWidget *>(each->parentWidget())) {
            put(u"shown"_s, each, word(!each->isHidden()));
        }
        if (each->property("checkable").toBool())
            put(u"checked"_s, each, word(each->property("checked").toBool()));
        if (const auto *bar = qobject_cast<QProgressBar *>(each))
            put(u"running"_s, each, word(bar->value() > bar->minimum()));
        if (const auto *spinner = qobject_cast<Spinner *>(each))
            put(u"turning"_s, each, word(spinner->isAnimating()));
        if (each->inherits("DropHint"))
            put(u"lit"_s, each, word(isLit(each)));
        if (each->property("focusRing").isValid())
            put(u"ring"_s, each, word(each->property("focusRing").toBool()));
        if (qobject_cast<QLabel *>(each))
            put(u"colour"_s, each, each->palette().color(each->foregroundRole()).name());
    }
    for (const QAction *item : std::as_const(items)) {
        const QString control = followers.value(item->objectName());
        // One that follows is told only when it does not.
        const bool follows = !control.isEmpty() && item->isEnabled() == canBeUsed.value(control);
        if (isOurs(item))
            put(u"enabled"_s, item, word(follows || item->isEnabled()));
        put(u"stray"_s, item, control.isEmpty() || follows ? QString() : item->objectName());
    }
    const QWidget *front = QApplication::activeWindow();
    const std::pair<QString, QString> inFront{u"front"_s, {}};
    state.insert(inFront, front ? nameOf(front) : m_controls.value(inFront));
    const SettingsStore store;
    for (const QLatin1StringView key :
         {SettingsStore::theAppBackupPath, SettingsStore::theLastBackupDate,
          SettingsStore::theFolder8899, SettingsStore::installations}) {
        const QVariant value = store.object(key);
        QString text = value.toDateTime().isValid() ? u"DATE"_s : value.toString();
        for (const InstallationRecord &record : installationRecords(value))
            text += record.line + u'|';
        state.insert({u"store"_s, key}, key + u'=' + text);
    }
    return state;
}

QStringList ChangeList::changesOnDisk()
{
    auto now = m_home.snapshot();
    now.removeIf([](auto item) { return startsWithFolder(item.key(), u".config"_s); });
    const auto before = std::exchange(m_disk, now);
    QStringList changes;
    QStringList told; // of what has a line, with all inside
    const auto isTold = [&](const QString &path) {
        return std::any_of(told.begin(), told.end(),
                           [&](const QString &each) { return startsWithFolder(path, each); });
    };
    const auto holdsFile = [](const QMap<QString, QByteArray> &items) {
        return std::any_of(items.begin(), items.end(),
                           [](const QByteArray &state) { return state.contains(' '); });
    };
    const QStringList olds = before.keys();
    for (const QString &path : now.keys()) {
        const auto made = tree(now, path);
        if (before.contains(path) || isTold(path) || !holdsFile(made))
            continue;
        const auto source = std::find_if(olds.begin(), olds.end(), [&](const QString &old) {
            return !isTold(old) && tree(before, old) == made;
        });
        if (source == olds.end())
            continue;
        const bool isMoved = !now.contains(*source);
        changes << *source + (isMoved ? u" -> "_s : u" => "_s) + path;
        told << path << (isMoved ? QStringList(*source) : QStringList());
    }
    for (const auto &[verb, there, here] :
         {std::tuple(u"make "_s, now, before), std::tuple(u"remove "_s, before, now)}) {
        for (const QString &path : there.keys()) {
            if (here.contains(path) || isTold(path))
                continue;
            changes << verb + path;
            told << path;
        }
    }
    for (auto item = before.begin(); item != before.end(); ++item) {
        if (now.value(item.key(), item.value()) != item.value())
            changes << u"write "_s + item.key();
    }
    return changes;
}

QString ChangeList::shortened(QString text) const
{
    static const QRegularExpression date(u"\\d{4}-\\d\\d-\\d\\d \\d\\d[:-]\\d\\d[:-]\\d\\d|"
                                         "\\d\\d-\\d\\d-\\d{4} \\|\\| \\d\\d_\\d\\d_\\d\\d \\w+"_s);
    text.replace(m_home.path(), u"~"_s).replace("Movies/Motion Templates.localized"_L1, "LIB"_L1);
    return text.replace(date, u"DATE"_s).replace(".localized"_L1, ".l"_L1);
}
