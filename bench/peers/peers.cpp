// What others need for the same jobs, under the same names as in brimvale_bench: libxml2 with XPath
// for the editor, a plain QSettings file for the history. Beside them the limits: what the system
// itself needs for the bytes of a job, from memory to memory or from memory to the disk, without
// any work on them.

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QSettings>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <unistd.h>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

// libxml2

void inspect(benchmark::State &state, const std::string &path)
{
    constexpr std::array queries = {"//theme", "//frameRate", "//duration",
                                    "//width", "//height",    "//pixelAspectRatio"};
    std::string label;
    for (auto _ : state) {
        xmlDoc *document = xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_HUGE);
        xmlXPathContext *context = xmlXPathNewContext(document);
        label.clear();
        for (const char *query : queries) {
            xmlXPathObject *found =
                xmlXPathEvalExpression(reinterpret_cast<const xmlChar *>(query), context);
            xmlChar *value = xmlXPathCastToString(found);
            if (!label.empty())
                label += '|';
            label += reinterpret_cast<char *>(value);
            xmlFree(value);
            xmlXPathFreeObject(found);
        }
        xmlXPathFreeContext(context);
        xmlFreeDoc(document);
    }
    state.SetLabel(label);
}

// A plain QSettings file

QSettings settings()
{
    return {QSettings::NativeFormat, QSettings::UserScope, u"Brimvale"_s, u"Brimvale"_s};
}

const QString key = u"installations"_s;

QVariantMap record(int number)
{
    return {{key, u"2026-11-15 22:18:05 Titles   Lower Third %1"_s.arg(number)}};
}

qsizetype linesOf(const QVariantList &history)
{
    QStringList lines;
    for (const QVariant &each : history)
        lines << each.toMap().value(key).toString();
    return lines.size();
}

void append(benchmark::State &state, int records)
{
    QVariantList filled;
    for (int number = 0; number < records; ++number)
        filled << record(number);
    {
        QSettings store(settings());
        store.setValue(key, filled);
    }
    for (auto _ : state) {
        QSettings store(settings());
        QVariantList history = store.value(key).toList();
        history << record(records);
        store.setValue(key, history);
        store.sync();
        benchmark::DoNotOptimize(linesOf(store.value(key).toList()));
    }
}

void load(benchmark::State &state)
{
    qsizetype lines = 0;
    for (auto _ : state)
        lines = linesOf(settings().value(key).toList());
    state.SetLabel(std::to_string(lines));
}

// The limits

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void readLimit(benchmark::State &state, const QString &path)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(bytesOf(path).size());
}

/// A file of these bytes on the disk, under its name.
void writeLimit(benchmark::State &state, const QString &path)
{
    const QByteArray bytes = bytesOf(path);
    const QByteArray name = QFile::encodeName(path + u".limit"_s);
    const QByteArray temporary = name + ".new";
    for (auto _ : state) {
        const int file =
            ::open(temporary.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        if (::write(file, bytes.constData(), size_t(bytes.size())) != bytes.size() ||
            ::fsync(file) != 0 || ::close(file) != 0 ||
            std::rename(temporary.constData(), name.constData()) != 0)
            state.SkipWithError("cannot write");
    }
    ::unlink(name.constData());
}

/// A tree's files, from memory: what any copy has to write.
void copyLimit(benchmark::State &state, const QString &tree, const QString &place)
{
    QDir().mkpath(place);
    std::vector<qint64> sizes;
    qint64 largest = 0;
    for (QDirIterator walk(tree, QDir::Files, QDirIterator::Subdirectories); walk.hasNext();) {
        sizes.push_back(walk.nextFileInfo().size());
        largest = std::max(largest, sizes.back());
    }
    const QByteArray bytes(largest, 'x');
    for (auto _ : state) {
        int number = 0;
        for (const qint64 size : sizes) {
            const QByteArray name = QFile::encodeName(place) + '/' + QByteArray::number(number++);
            const int file = ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL, 0600);
            if (::write(file, bytes.constData(), size_t(size)) != size || ::close(file) != 0)
                state.SkipWithError("cannot write");
        }
    }
    QDir(place).removeRecursively();
}

} // namespace

int main(int argc, char *argv[])
{
    benchmark::Initialize(&argc, argv);
    const QString folder = qEnvironmentVariable("BRIMVALE_BENCH_DIR");
    for (const QFileInfo &file : QDir(folder + u"/files"_s).entryInfoList({u"*.motn"_s})) {
        const std::string size = '/' + file.completeBaseName().toStdString();
        const QString path = file.absoluteFilePath();
        benchmark::RegisterBenchmark(("inspect" + size).c_str(), inspect, path.toStdString());
        benchmark::RegisterBenchmark(("limit_read" + size).c_str(), readLimit, path);
        benchmark::RegisterBenchmark(("limit_write" + size).c_str(), writeLimit, path);
    }
    for (const QString &shape :
         QDir(folder + u"/trees"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString tree = folder + u"/trees/"_s + shape;
        benchmark::RegisterBenchmark(("limit_copy/" + shape.toStdString()).c_str(), copyLimit, tree,
                                     folder + u"/out/limit"_s)
            ->Iterations(1)
            ->UseRealTime();
    }
    for (const int records : {100, 10000, 100000}) {
        const std::string size = '/' + std::to_string(records);
        benchmark::RegisterBenchmark(("history_append" + size).c_str(), append, records);
        benchmark::RegisterBenchmark(("history_load" + size).c_str(), load)->Iterations(1);
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
