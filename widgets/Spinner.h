#pragma once

#include <QTimer>
#include <QWidget>

/// A turning indicator of work without a known end. It keeps its place while it is stopped, so
/// that nothing around it moves.
class Spinner : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Spinner)

public:
    explicit Spinner(QWidget *parent = nullptr);

    [[nodiscard]] bool isAnimating() const { return m_timer.isActive(); }
    void startAnimation();
    void stopAnimation();

    [[nodiscard]] QSize sizeHint() const override
    {
        return QSize(1, 1) * qMax(20, fontMetrics().height());
    }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void advance();

    QTimer m_timer;
    int m_step = 0;
};
