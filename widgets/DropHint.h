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

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_isHighlighted = false;
};
