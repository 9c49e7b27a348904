#pragma once

#include <QStringList>

#include <utility>

/// Keeps what the program writes to its diagnostic log while this lives. One at a time.
class LogLines
{
public:
    LogLines()
    {
        s_lines.clear();
        s_previous = qInstallMessageHandler(keep);
    }
    ~LogLines() { qInstallMessageHandler(s_previous); }
    Q_DISABLE_COPY_MOVE(LogLines)

    /// The lines since the last time.
    [[nodiscard]] QStringList take() const { return std::exchange(s_lines, {}); }

private:
    static void keep(QtMsgType type, const QMessageLogContext &context, const QString &message)
    {
        if (qstrcmp(context.category, "brimvale") == 0)
            s_lines << message;
        else
            s_previous(type, context, message);
    }

    static inline QStringList s_lines;
    static inline QtMessageHandler s_previous = nullptr;
};
