#pragma once

#include <QStringList>
#include <QWidget>

class QAbstractButton;

/// A row of joined buttons of which one is selected. Each segment bears a tag, a number of the
/// owner's own that is -1 until it is set.
class SegmentedControl : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SegmentedControl)
    Q_PROPERTY(QStringList segments READ segments WRITE setSegments)
    Q_PROPERTY(int selectedSegment READ selectedSegment WRITE setSelectedSegment)
    Q_PROPERTY(bool momentary READ isMomentary WRITE setMomentary)

public:
    explicit SegmentedControl(QWidget *parent = nullptr);

    [[nodiscard]] QStringList segments() const;
    /// The first one becomes the selected one, unless the control is momentary.
    void setSegments(const QStringList &labels);

    /// The index of the segment that was selected last; -1 before any was.
    [[nodiscard]] int selectedSegment() const { return m_selected; }
    /// Selects without a signal, as a program does; anything but a segment's index is ignored.
    void setSelectedSegment(int segment);

    [[nodiscard]] int tag(int segment) const;
    void setTag(int tag, int segment);

    /// A momentary control shows no selection: its segments are pushed, not chosen.
    [[nodiscard]] bool isMomentary() const { return m_isMomentary; }
    void setMomentary(bool momentary);

    [[nodiscard]] QAbstractButton *button(int segment) const { return m_buttons.value(segment); }

Q_SIGNALS:
    /// On every press by the user, also of the segment that is selected already.
    void pressed(int segment);

private:
    void takePlaceInTabOrder();
    void updateChecks();

    QList<QAbstractButton *> m_buttons;
    QList<int> m_tags;
    int m_selected = -1;
    bool m_isMomentary = false;
};
