#pragma once

#include <QLabel>

/// A tool tip that shows this text as it stands, in lines that fit the screen; none for no text.
QString toolTipOf(const QString &text);

/// A text on one line, a path above all: shortened in the middle where it is too long, whole in
/// text() and in the tooltip, and copied whole through the context menu. While there is no text,
/// a quiet placeholder stands in its place. With wordWrap it is not shortened but goes on in the
/// next line. Of a text of thousands of characters all but text() and the copy has the first and
/// the last ones alone, so that showing it costs no more than any other.
class ElidedLabel : public QLabel
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ElidedLabel)
    Q_PROPERTY(QString placeholderText READ placeholderText WRITE setPlaceholderText)
    Q_PROPERTY(bool paper READ hasPaper WRITE setPaper)

public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    [[nodiscard]] QString placeholderText() const { return m_placeholderText; }
    void setPlaceholderText(const QString &text)
    {
        m_placeholderText = text;
        updateGeometry(); // it is never shortened
        update();
    }

    /// Whether the text stands on white paper: for a colour that is the same on light and dark.
    [[nodiscard]] bool hasPaper() const { return m_hasPaper; }
    void setPaper(bool paper) { m_hasPaper = paper; }

    /// A text that is never shortened; the placeholder is none either.
    void setRoomFor(const QString &text) { m_roomFor = text; }

    /// Whether the text is drawn and read out; if not, the placeholder is.
    [[nodiscard]] virtual bool showsText() const { return !text().isEmpty(); }
    /// What a screen reader says: what is drawn, in words.
    [[nodiscard]] virtual QString spokenText() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    /// The ground right behind what is drawn, with some room on its sides.
    [[nodiscard]] QRectF ground() const;

private:
    [[nodiscard]] QRect textArea() const;
    [[nodiscard]] QString drawnText() const;
    [[nodiscard]] int drawnFlags() const;

    QString m_placeholderText;
    QString m_roomFor;
    bool m_hasPaper = false;
};
