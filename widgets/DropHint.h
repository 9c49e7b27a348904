#pragma once

#include <QFrame>

/// The dashed frame that shows where something may be dropped; it lights up while something
/// droppable is over it.
class DropHint : public QFrame
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(DropHint)

public:
    explicit DropHint(QWidget *parent = nullptr);

    void setHighlighted(bool highlighted);
    [[nodiscard]] bool isHighlighted() const { return m_isHighlighted; }
    /// Whether something lies in it: then its frame is a closed line.
    void setFilled(bool filled);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_isHighlighted = false;
    bool m_isFilled = false;
};
