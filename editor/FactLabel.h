#pragma once

#include "widgets/ElidedLabel.h"

#include <QVariantAnimation>

/// A fact of the file. Its text is what was read last; how it is drawn and read out tells whether
/// it is a fact of the file in hand.
class FactLabel : public ElidedLabel
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(FactLabel)

public:
    enum class Standing {
        None,    ///< there is no file: a dash, whatever the text
        Earlier, ///< of a file before this one, which does not say: dimmed
        Present, ///< of the file in hand
    };

    explicit FactLabel(QWidget *parent = nullptr);

    /// A present value.
    void setValue(const QString &value);
    void setStanding(Standing standing);
    /// Draws the eye to the value for a moment.
    void tint();

    [[nodiscard]] bool showsText() const override;
    [[nodiscard]] QString spokenText() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Standing m_standing = Standing::None;
    QVariantAnimation m_tint{this};
};
