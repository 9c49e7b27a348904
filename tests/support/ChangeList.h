#pragma once

#include "ControlStates.h"
#include "LogLines.h"
#include "TestHome.h"

#include <QUrl>

#include <optional>

/// What changes while the program runs: in its controls and menu items, on the disk of the home, in
/// the settings, what is opened, logged, alerted and waited for. Dialogs are answered at once,
/// waits are short, and progress bars move only when a test moves them.
///
/// A change is a few words. Dates, the home and the library's path are shortened, a semicolon is a
/// comma, and an end of line a stroke:
///     on input, off input         enabled                 input=~/Glow       text, index, title,
///     show input, hide input      hidden or not                              rows, progress
///     check input, uncheck input  checked                 input #ff0000      colour of the text,
///     turn spinner, stop spinner  turning                 input quiet        or a placeholder's
///     light hint, dim hint        something is over it
///     ring input, unring input    focus ring, or mark     focus input        the window's
///     fade icon, unfade icon      half transparent        unfocus mWindow    none of its controls
///     say input, unsay input      text is read aloud
///     tint input, untint input    drawing the eye         front mWindow      the active window
///     default a, undefault a      Return presses it       minimize a, restore a
///     make a, remove a            file or tree            a -> b, a => b     moved, copied
///     write a new lines           of a text               store key=value    settings
///     open url, log a / b, wait 1500                      stray item         it can be chosen when
///     alert text, panel title     a dialog                                   its control cannot
class ChangeList : public QObject
{
    Q_OBJECT

public:
    explicit ChangeList(const TestHome &home);
    ~ChangeList() override;

    /// Every change since the last time. In alphabetical order between two waits or dialogs,
    /// which stand where they happened.
    [[nodiscard]] QStringList take();

    /// From here on every control counts as one on, shown and unchecked, and unlike that as
    /// changed.
    void forgetStates() { m_states = plainStates(m_states); }

    /// Behind all that has changed before it.
    void happen(const QString &change);

    /// From here on what is told of a template is watched too.
    void watchCard() { m_watchesCard = true; }

    /// From here on nothing comes of the reading of a template.
    void withholdReading() { m_withholdsReading = true; }

    /// How the next file dialog is answered: with that path, or with none by Escape.
    void answerPanel(const QString &path) { m_answer = path; }
    [[nodiscard]] bool isAnswered() const { return !m_answer; }

    /// The changes in such a text: "off input test; test=" are three.
    [[nodiscard]] static QStringList parsed(const QString &text);

    bool eventFilter(QObject *watched, QEvent *event) override;

public Q_SLOTS:
    void openAddress(const QUrl &address);

private:
    [[nodiscard]] ControlStates states() const;
    [[nodiscard]] QMap<QString, QByteArray> disk() const;
    [[nodiscard]] QString shortened(QString text) const;
    void collect();
    void answer(QWidget *dialog);

    const TestHome &m_home;
    const LogLines m_log;
    bool m_watchesCard = false;
    bool m_withholdsReading = false;
    ControlStates m_states;
    QMap<QString, QByteArray> m_disk;
    QStringList m_opened;
    QStringList m_changes;
    std::optional<QString> m_answer;
};
