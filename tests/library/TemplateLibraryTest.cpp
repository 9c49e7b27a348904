#include "library/TemplateLibrary.h"

#include "tests/support/TestHome.h"

using namespace Qt::StringLiterals;

/// Texts that the users know by heart, to the letter.
class TemplateLibraryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsOfEachInstall()
    {
        QStringList texts;
        for (const TemplateCategory &each : TemplateLibrary::categories())
            texts << each.installedText << each.customInstalledText;
        QCOMPARE(texts,
                 (QStringList{u"Composition Installed..."_s, u"Composition Installed ..."_s,
                              u"Effect Installed ..."_s, u"Effect Installed ..."_s,
                              u"Generator Installed ..."_s, u"Generator Installed ..."_s,
                              u"Title Installed ..."_s, u"Title Installed ..."_s,
                              u"Transition Installed ..."_s, u"Transition Installed ..."_s}));
        QVERIFY(!TemplateLibrary::category(-1) && !TemplateLibrary::category(5));
    }
};

int main(int argc, char *argv[])
{
    return runTest<QCoreApplication, TemplateLibraryTest>(argc, argv);
}

#include "TemplateLibraryTest.moc"
