#include "TemplateCard.h"

#include "widgets/Legibility.h"

#include <QEvent>

using namespace Qt::StringLiterals;

namespace {

constexpr qreal largestScale = 3; // of a picture, where the card has room for it

} // namespace

TemplateCard::TemplateCard(QWidget *parent) : DropHint(parent)
{
    setupUi(this);
    fitFont();
    showTemplate({}); // which hides what there is nothing for
    showInvitation();
    connect(libraryButton, &QAbstractButton::clicked, this, &TemplateCard::libraryRequested);
}

/// Heading, pictures and room keep their size beside the text, whatever the font.
void TemplateCard::fitFont()
{
    for (QLabel *each : std::initializer_list<QLabel *>{installHintTitle, cardName})
        each->setFont(headingFont());
    setMinimumSize(besideText(*this, 340), besideText(*this, 190));
    installHintIcon->setPixmap(pictureBesideText(*this, QIcon(u":/icons/library-64.png"_s), 64));
    showWarningIcon(cardWarningIcon, !cardWarnings->text().isEmpty());
}

void TemplateCard::changeEvent(QEvent *event)
{
    DropHint::changeEvent(event);
    if (event->type() == QEvent::ApplicationFontChange || event->type() == QEvent::StyleChange)
        fitFont();
}

void TemplateCard::showInvitation()
{
    showMessage(tr("Drop a template folder here"),
                tr("It moves into Motion's library, into the category on the right."));
}

void TemplateCard::showMessage(const QString &title, const QString &text)
{
    installHintTitle->setText(title);
    installHintText->setText(text);
    cardPages->setCurrentWidget(hintPage);
    setFilled(false);
}

void TemplateCard::showTemplate(const Contents &contents)
{
    cardName->setText(contents.name);
    cardFacts->setText(contents.facts);
    cardPlace->setText(contents.place);
    cardPlaceIcon->setPixmap(pictureBesideText(*this, contents.placeIcon, 16));
    cardWarnings->setText(contents.warnings.join(u'\n'));
    showWarningIcon(cardWarningIcon, !contents.warnings.isEmpty());
    libraryButton->setVisible(contents.offersLibrary);
    cardPages->setCurrentWidget(templatePage);
    setFilled(true);
}

QSize TemplateCard::pictureSize() const
{
    return pictureBox(largestScale) * devicePixelRatioF();
}

void TemplateCard::setPicture(const QImage &picture, const QIcon &icon)
{
    m_picture = picture;
    cardPicture->setPixmap(pictureBesideText(*this, icon, 64));
    fitPicture();
}

QSize TemplateCard::pictureBox(qreal scale) const
{
    return QSize(besideText(*this, 128), besideText(*this, 72)) * scale;
}

/// Larger where the card has room for it.
void TemplateCard::fitPicture()
{
    if (m_picture.isNull())
        return;
    const QSizeF room = QSizeF(size()) / besideText(*this, 190);
    const QSize box =
        pictureBox(std::clamp(qMin(room.width() / 2, room.height()), qreal(1), largestScale)) *
        devicePixelRatioF();
    const bool isLarger = m_picture.width() > box.width() || m_picture.height() > box.height();
    QPixmap shown = QPixmap::fromImage(
        isLarger ? m_picture.scaled(box, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                 : m_picture);
    shown.setDevicePixelRatio(devicePixelRatioF());
    cardPicture->setPixmap(shown);
}

void TemplateCard::resizeEvent(QResizeEvent *event)
{
    DropHint::resizeEvent(event);
    fitPicture();
}
