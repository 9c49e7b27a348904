#include "EditPage.h"
#include "motion/ProjectKind.h"
#include "widgets/Legibility.h"
#include "widgets/Mark.h"

#include <QAccessible>
#include <QEvent>
#include <QGraphicsOpacityEffect>
#include <QIcon>

using namespace Qt::StringLiterals;

namespace {

/// Quiet, for what is of the file before or was refused.
void setDimmed(QWidget *widget, bool isDimmed)
{
    auto *effect = isDimmed ? new QGraphicsOpacityEffect(widget) : nullptr;
    if (effect)
        effect->setOpacity(0.5);
    widget->setGraphicsEffect(effect);
}

/// ".moef, .motn, .moti or .motr"
QString extensionsText()
{
    QStringList extensions;
    for (const ProjectKind &kind : projectKinds())
        extensions << u'.' + kind.extension;
    const QString last = extensions.takeLast();
    return EditPage::tr("%1 or %2").arg(extensions.join(u", "_s), last);
}

/// A screen reader says it now, wherever the focus is.
void announce(QLabel *message)
{
    QAccessibleEvent alert(message, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

} // namespace

void EditPage::changeEvent(QEvent *event)
{
    dropZone1::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fitToFont();
}

/// Headings and pictures stay in proportion to the text.
void EditPage::fitToFont()
{
    for (QLabel *each : std::initializer_list<QLabel *>{display, emptyHeading})
        each->setFont(headingFont());
    typeText->setFixedWidth(typeText->minimumSizeHint().width()); // the name gets the rest
    statusImage->setFixedSize(QSize(1, 1) * besideText(*this, 64));
    emptyPicture->setFixedSize(QSize(1, 1) * besideText(*this, 48));
    emptyPicture->setPixmap(picture(u"noFile.png"_s, emptyPicture->width()));
}

/// A picture of the resources, sharp at that size.
QPixmap EditPage::picture(const QString &name, int side) const
{
    QIcon icon(u":/"_s + name);
    icon.addFile(u":/"_s + QString(name).replace(u".png"_s, u"@3x.png"_s));
    return icon.pixmap(QSize(side, side), devicePixelRatioF());
}

/// Shows the file's name, or invites one. What is known of a refused file stays, dimmed.
void EditPage::showCard()
{
    const bool hasFile = tClearButton->isEnabled();
    if (hasFile)
        display->setPlaceholderText({}); // it would keep the window wide
    else
        invite(tr("Drop a Motion file here"), extensionsText());
    showFileCard(hasFile || !input1->text().isEmpty());
    editHint->setFilled(hasFile);
    setDimmed(statusImage, !hasFile);
    input1->setForegroundRole(hasFile ? QPalette::NoRole : QPalette::PlaceholderText);
}

/// Or the invitation.
void EditPage::showFileCard(bool isFile)
{
    const std::array<QWidget *, 3> parts{fileCard, emptyPicture, emptyCard};
    for (QWidget *each : parts) // before any is shown: both sides at once would widen the window
        each->hide();
    for (QWidget *each : parts)
        each->setVisible((each == fileCard) == isFile);
    constexpr int left = 0;
    constexpr int card = 1;
    constexpr int right = 4;
    editHintLayout->setColumnStretch(left, isFile ? 0 : 1);
    editHintLayout->setColumnStretch(card, isFile ? 1 : 0);
    editHintLayout->setColumnStretch(right, isFile ? 0 : 1);
}

void EditPage::invite(const QString &heading, const QString &text)
{
    emptyHeading->setText(heading);
    emptyText->setText(text);
    display->setPlaceholderText(heading);
}

/// A file that was picked, but whose name says that it is none of Motion's.
void EditPage::declineFile()
{
    if (tClearButton->isEnabled())
        return; // one that was dropped meanwhile is shown
    invite(tr("That file was not opened"),
           tr("Its name must end in %1, in lower case").arg(extensionsText()));
    showFileCard(false); // the reason is not on it
    showStanding(FactLabel::Standing::None);
    announce(emptyHeading);
}

/// The message beside the progress bar, and the picture in front of it.
void EditPage::say(const QString &message, const QIcon &icon)
{
    wasArchived->setText(message);
    const int side = besideText(*this, 16);
    statusIcon->setPixmap(icon.pixmap(QSize(side, side), devicePixelRatioF()));
    statusStrip->setHidden(message.isEmpty());
    frPopupMark->setWidget(nullptr);
    markMessageAsEarlier(false);
    if (!message.isEmpty())
        announce(wasArchived);
}

/// The message stays when another file comes, but it is not about that one.
void EditPage::markMessageAsEarlier(bool isEarlier)
{
    setDimmed(statusStrip, isEarlier);
    statusStrip->setToolTip(isEarlier ? tr("About the file before") : QString());
    if (isEarlier)
        frPopupMark->setWidget(nullptr);
}

void EditPage::showStanding(FactLabel::Standing standing)
{
    for (FactLabel *each : facts())
        each->setStanding(standing);
}

QStringList EditPage::factTexts() const
{
    QStringList texts;
    for (const FactLabel *each : facts())
        texts << each->text();
    return texts;
}

/// To be called when what is shown is written: a change that did not reach the file is none.
void EditPage::tintChanges(const QStringList &before) const
{
    for (std::size_t i = 0; i < facts().size(); ++i) {
        if (facts().at(i)->text() != before.at(static_cast<qsizetype>(i)))
            facts().at(i)->tint();
    }
}
