#include "OwnInput.h"

#include <QByteArray>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

/// A system's memory file system, where there is one, is another one than its disk.
QString otherFileSystem()
{
    const QString memory = u"/dev/shm"_s;
    return QFileInfo(memory).isWritable() ? memory : QDir::tempPath();
}

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write the input of the benchmarks");
}

QByteArray sceneNode(int number)
{
    const QByteArray id = QByteArray::number(10000 + number);
    return "\t<scenenode name=\"Shape " + id + "\" id=\"" + id +
           "\" factoryID=\"2\" version=\"5\">\n"
           "\t\t<flags>0</flags>\n"
           "\t\t<timing in=\"0 1 1 0\" out=\"-6144 153600 1 0\" offset=\"0 1 1 0\"/>\n"
           "\t\t<foldFlags>0</foldFlags>\n"
           "\t\t<parameter name=\"Properties\" id=\"1\" flags=\"8589938704\">\n"
           "\t\t\t<parameter name=\"Opacity\" id=\"102\" flags=\"8589934608\" default=\"0\" "
           "value=\"0.75\"/>\n"
           "\t\t\t<parameter name=\"Position\" id=\"101\" flags=\"8589938706\">\n"
           "\t\t\t\t<curve type=\"1\" default=\"0\" value=\"0\">\n"
           "\t\t\t\t\t<keypoint flags=\"0\"><time>0 1 1 0</time><value>12.5</value></keypoint>\n"
           "\t\t\t\t</curve>\n"
           "\t\t\t</parameter>\n"
           "\t\t</parameter>\n"
           "\t</scenenode>\n";
}

QByteArray motionFile(qsizetype size)
{
    QByteArray text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE ozxmlscene>\n"
                      "<ozml version=\"5.8\">\n\n<displayversion>5.3.2</displayversion>\n\n"
                      "<build></build>\n\n<description></description>\n\n<scene>\n"
                      "\t<sceneSettings>\n\t\t<width>1920</width>\n\t\t<height>1080</height>\n"
                      "\t\t<duration>300</duration>\n\t\t<frameRate>29.97</frameRate>\n"
                      "\t\t<NTSC>1</NTSC>\n\t\t<pixelAspectRatio>1</pixelAspectRatio>\n"
                      "\t</sceneSettings>\n";
    text.reserve(size + 1024);
    for (int number = 0; text.size() < size; ++number)
        text += sceneNode(number);
    return text + "</scene>\n\n</ozml>\n";
}

void makeTree(const QString &path, int files, qsizetype size)
{
    constexpr int filesInAFolder = 100;
    const QByteArray content(size, 'x');
    for (int number = 0; number < files; ++number) {
        const QString folder = u"%1/%2"_s.arg(path).arg(number / filesInAFolder);
        if (number % filesInAFolder == 0 && !QDir().mkpath(folder))
            qFatal("cannot make the input of the benchmarks");
        writeFile(u"%1/%2"_s.arg(folder).arg(number), content);
    }
}

} // namespace

void makeInput(const QString &path)
{
    constexpr qsizetype kilobyte = 1024;
    constexpr qsizetype megabyte = 1024 * kilobyte;
    const QDir folder(path);
    for (const QString &name : {u"files"_s, u"trees"_s, u"out"_s}) {
        if (!folder.mkpath(name))
            qFatal("cannot make the folders of the benchmarks");
    }
    const std::initializer_list<std::pair<QString, qsizetype>> files = {{u"12K"_s, 12 * kilobyte},
                                                                        {u"128K"_s, 128 * kilobyte},
                                                                        {u"1M"_s, megabyte},
                                                                        {u"8M"_s, 8 * megabyte},
                                                                        {u"64M"_s, 64 * megabyte}};
    for (const auto &[name, size] : files)
        writeFile(folder.filePath(u"files/%1.motn"_s.arg(name)), motionFile(size));
    for (const int count : {20, 200, 2000, 20000})
        makeTree(folder.filePath(u"trees/%1x4K"_s.arg(count)), count, 4 * kilobyte);
    makeTree(folder.filePath(u"trees/1000x200K"_s), 1000, 200 * kilobyte);
    makeTree(folder.filePath(u"trees/4x128M"_s), 4, 128 * megabyte);
}

OwnInput::OwnInput() : m_otherFileSystem(otherFileSystem() + u"/brimvale_bench-XXXXXX"_s)
{
    makeInput(m_folder.path());
    QDir(m_otherFileSystem.path()).mkdir(u"out"_s);
    qputenv("HOME", QFile::encodeName(m_folder.path()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_folder.filePath(u".config"_s)));
}

Workplace OwnInput::workplace() const
{
    return {m_folder.path(), m_otherFileSystem.path()};
}
