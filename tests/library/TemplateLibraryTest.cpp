#include "library/TemplateLibrary.h"

#include "tests/support/TestHome.h"

using namespace Qt::StringLiterals;

/// Paths and texts that Motion and the users know by heart, to the letter.
class TemplateLibraryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void knowsItsCategories()
    {
        const QString root = u"~/Movies/Motion Templates.localized/"_s;
        const auto expect = [&](int row, const QString &name, const QString &installed,
                                const QString &customInstalled) {
            const TemplateCategory *category = TemplateLibrary::category(row);
            QVERIFY(category);
            QCOMPARE(category->name, name);
            QCOMPARE(category->path, root + name + u".localized"_s);
            QCOMPARE(category->installedText, installed);
            QCOMPARE(category->customInstalledText, customInstalled);
        };
        expect(0, u"Compositions"_s, u"Composition Installed..."_s, u"Composition Installed ..."_s);
        expect(1, u"Effects"_s, u"Effect Installed ..."_s, u"Effect Installed ..."_s);
        expect(2, u"Generators"_s, u"Generator Installed ..."_s, u"Generator Installed ..."_s);
        expect(3, u"Titles"_s, u"Title Installed ..."_s, u"Title Installed ..."_s);
        expect(4, u"Transitions"_s, u"Transition Installed ..."_s, u"Transition Installed ..."_s);
        QVERIFY(!TemplateLibrary::category(-1) && !TemplateLibrary::category(5));
    }
};

int main(int argc, char *argv[])
{
    return runTest<QCoreApplication, TemplateLibraryTest>(argc, argv);
}

#include "TemplateLibraryTest.moc"
