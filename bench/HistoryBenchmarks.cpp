#include "Benchmarks.h"
#include "history/InstallationRecord.h"
#include "settings/SettingsStore.h"

#include <QDateTime>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

InstallationRecord record(int number)
{
    return InstallationRecord::make(QDateTime::currentDateTime().toString(u"yyyy-MM-dd HH:mm:ss"_s),
                                    u"Titles"_s, u"Lower Third %1"_s.arg(number));
}

void fillHistory(int records)
{
    QVariantList history;
    for (int number = 0; number < records; ++number)
        history << QVariantMap{{u"installations"_s, record(number).line}};
    SettingsStore store;
    std::ignore = store.setObject(history, SettingsStore::installations);
    std::ignore = store.synchronize();
}

/// What the last tick of an install's animation does with its record.
void append(benchmark::State &state, int records)
{
    fillHistory(records);
    for (auto _ : state) {
        std::ignore = appendInstallation(record(records));
        const auto shown =
            installationRecords(SettingsStore().object(SettingsStore::installations));
        benchmark::DoNotOptimize(shown.size());
        std::ignore = SettingsStore().synchronize();
    }
}

void load(benchmark::State &state)
{
    qsizetype lines = 0;
    for (auto _ : state)
        lines = installationRecords(SettingsStore().object(SettingsStore::installations)).size();
    state.SetLabel(std::to_string(lines));
}

} // namespace

void registerHistoryBenchmarks(const Workplace &)
{
    for (const int records : {100, 10000, 100000}) {
        const std::string size = std::to_string(records);
        benchmark::RegisterBenchmark(("history_append/" + size).c_str(), append, records);
        benchmark::RegisterBenchmark(("history_load/" + size).c_str(), load)->Iterations(1);
    }
}
