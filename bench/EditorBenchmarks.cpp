#include "Benchmarks.h"
#include "motion/InspectionValues.h"
#include "motion/ProjectChanges.h"

#include <QDir>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

/// What an intake reads of a file.
void inspect(benchmark::State &state, const QString &path)
{
    InspectionValues values;
    for (auto _ : state)
        values = readInspectionValues(openProjectDocument(path));
    QStringList shown;
    for (const QStringList &fact : {values.theme, values.frameRate, values.duration, values.width,
                                    values.height, values.pixelAspectRatio})
        shown << firstValue(fact).value_or(QString());
    state.SetLabel(shown.join(u'|').toStdString());
}

/// What a conform to 25 frames a second does to a file of ten seconds.
void conform(benchmark::State &state, const QString &path)
{
    for (auto _ : state) {
        Result<ProjectDocument> document = openProjectDocument(path);
        if (!document ||
            !conformFirstTriple(*document, conformedRate(4, u"10.0 seconds"_s)).anyTriple ||
            !saveProjectDocument(*document, path)) {
            state.SkipWithError("not conformed");
            break;
        }
    }
}

/// What setting the theme does to a file: the first time it gets an element for it.
void setThemeName(benchmark::State &state, const QString &path)
{
    for (auto _ : state) {
        Result<ProjectDocument> document = openProjectDocument(path);
        bool done = static_cast<bool>(document);
        if (done && nodeValues(document, {"theme"}).front().isEmpty())
            done = insertTheme(*document) && saveProjectDocument(*document, path);
        if (!done || setTheme(*document, u"Bench & Co"_s) == 0 ||
            !saveProjectDocument(*document, path)) {
            state.SkipWithError("no theme set");
            break;
        }
    }
}

} // namespace

void registerEditorBenchmarks(const Workplace &workplace)
{
    const QDir files(workplace.folder + u"/files"_s);
    for (const QFileInfo &file : files.entryInfoList({u"*.motn"_s}, QDir::Files)) {
        const std::string size = file.completeBaseName().toStdString();
        const QString path = file.absoluteFilePath();
        benchmark::RegisterBenchmark(("inspect/" + size).c_str(), inspect, path);
        benchmark::RegisterBenchmark(("conform/" + size).c_str(), conform, path);
        benchmark::RegisterBenchmark(("theme/" + size).c_str(), setThemeName, path);
    }
}
