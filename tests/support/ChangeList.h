#pragma once

#include "LogLines.h"
#include "TestHome.h"

#include <QUrl>

#include <optional>

/// What changes while the program runs: in its controls and menu items (all that bear a name of
/// ours, so that new ones are watched too), on the disk of the home, in the settings, what is
/// opened, logged, alerted and waited for.
///
/// A change is a few words, and dates, the home and the library's path are shortened:
///     on input, off input         enabled                 input=~/Glow       text, index, title,
///     rows show input, hide input      hidden or not           input #ff0000      colour of the
///     text check input, uncheck input  checked                 focus input        the window's
///     control run bar, rest bar           progress                unfocus mWindow    none of its
///     controls turn spinner, stop spinner  turning                 front mWindow      the active
///     window light hint, dim hint        something is over it    ring, unring       focus ring
///     make a, remove a, write a   file or tree            a -> b, a => b     moved, copied
///     store key=value             settings                open url, log a / b, wait 1500
///     alert text, panel title     a dialog, which is answered at once
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
    void forgetStates();

    /// How the next file dialog is answered: with that path, or with none by Escape.
    void answerPanel(const QString &path) { m_answer = path; }
    [[nodiscard]] bool isAnswered() const { return !m_answer; }

    /// The changes in such a text: "off input test; test=" are three.
    [[nodiscard]] static QStringList parsed(const QString &text);

    bool eventFilter(QObject *watched, QEvent *event) override;

public Q_SLOTS:
    void openAddress(const QUrl &address);

private:
    using State = QMap<std::pair<QString, QString>, QString>; // by kind and name

    [[nodiscard]] State controls() const;
    [[nodiscard]] QStringList changesOnDisk();
    [[nodiscard]] QString shortened(QString text) const;
    void collect();
    void answer(QWidget *dialog);

    const TestHome &m_home;
    const LogLines m_log;
    State m_controls;
    QMap<QString, QByteArray> m_disk;
    QStringList m_happened;
    QStringList m_changes;
    std::optional<QString> m_answer;
};
