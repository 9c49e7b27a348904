#pragma once

#include <QFocusFrame>

/// A frame around a control that the user is asked to use: around the one it is given by
/// setWidget(), and gone with none.
class Mark : public QFocusFrame
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Mark)

public:
    explicit Mark(QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
};
