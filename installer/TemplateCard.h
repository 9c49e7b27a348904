#pragma once

#include "widgets/DropHint.h"

#include "ui_TemplateCard.h"

/// Where a template is dropped, and what is known of the one in hand: its picture, its name, what
/// is in it, where it goes, and what is to be thought of before it goes there.
class TemplateCard : public DropHint, private Ui::TemplateCard
{
    Q_OBJECT

public:
    struct Contents
    {
        QString name;
        QString facts; ///< empty while they are still being counted
        QString place;
        QIcon placeIcon;
        QStringList warnings;
        bool offersLibrary = false;
    };

    explicit TemplateCard(QWidget *parent = nullptr);

    /// Nothing is in hand: how to go on.
    void showInvitation();
    /// Nothing is in hand, but there is something to say.
    void showMessage(const QString &title, const QString &text);
    void showTemplate(const Contents &contents);
    /// Of the template that is shown: its own picture, or else an icon.
    void setPicture(const QImage &picture, const QIcon &icon);

    /// The largest that is shown, in pixels of the screen.
    [[nodiscard]] QSize pictureSize() const;

Q_SIGNALS:
    /// The user wants to make the library that the card misses.
    void libraryRequested();

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void fitFont();
    void fitPicture();
    [[nodiscard]] QSize pictureBox(qreal scale) const;

    QImage m_picture;
};
