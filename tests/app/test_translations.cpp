#include "DialogChecks.h"
#include "FileDialogs.h"
#include "Program.h"

#include "app/KytAtomProperties.h"
#include "app/KytBondProperties.h"

#include <QAction>
#include <QActionGroup>
#include <QComboBox>
#include <QFontInfo>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QToolBar>
#include <QToolButton>
#include <QXmlStreamReader>

namespace {

const QString compiledFolder = QStringLiteral(KYTSTUDIO_TRANSLATIONS);

/// A text as a .ts file has it.
struct Entry {
    QString context;
    QString source;
    QString translation;
    bool finished = true;

    QString key() const { return context + u'|' + source; }
};

Entry readMessage(QXmlStreamReader& xml, const QString& context)
{
    Entry entry;
    entry.context = context;
    while (xml.readNextStartElement()) {
        if (xml.name() == u"source") {
            entry.source = xml.readElementText();
        } else if (xml.name() == u"translation") {
            entry.finished = xml.attributes().isEmpty();
            entry.translation = xml.readElementText(QXmlStreamReader::IncludeChildElements);
        } else {
            xml.skipCurrentElement();
        }
    }
    return entry;
}

QList<Entry> readContext(QXmlStreamReader& xml)
{
    QList<Entry> entries;
    QString context;
    while (xml.readNextStartElement()) {
        if (xml.name() == u"name")
            context = xml.readElementText();
        else if (xml.name() == u"message")
            entries << readMessage(xml, context);
        else
            xml.skipCurrentElement();
    }
    return entries;
}

QList<Entry> entriesOf(const QString& fileName)
{
    QFile file(fileName);
    QList<Entry> entries;
    if (!file.open(QIODevice::ReadOnly))
        return entries;
    QXmlStreamReader xml(&file);
    xml.readNextStartElement();
    while (xml.readNextStartElement()) {
        if (xml.name() == u"context")
            entries << readContext(xml);
        else
            xml.skipCurrentElement();
    }
    return xml.hasError() ? QList<Entry>() : entries;
}

QStringList keysOf(const QList<Entry>& entries)
{
    QStringList keys;
    for (const Entry& entry : entries)
        keys << entry.key();
    keys.sort();
    return keys;
}

/// What of a text the program takes apart or fills in: formats, places for values, patterns of file names.
QStringList fixedPartsOf(const QString& text)
{
    static const QRegularExpression parts("%[0-9]|%[.0-9]*[a-z]|\\(\\*[^)]*\\)|@[A-Z_]+@");
    QStringList found;
    for (const QRegularExpressionMatch& match : parts.globalMatch(text))
        found << match.captured();
    return found;
}

/// The program's texts in one language, until the end of the scope.
class Language {
public:
    explicit Language(const QString& locale)
        : loaded(translator.load(QStringLiteral("kytstudio.") + locale, compiledFolder))
    {
        QCoreApplication::installTranslator(&translator);
    }
    ~Language() { QCoreApplication::removeTranslator(&translator); }
    Language(const Language&) = delete;
    Language& operator=(const Language&) = delete;

    QTranslator translator;
    bool loaded;
};

/// The shown labels and buttons of a dialog whose text does not fit.
QStringList cutOffIn(const QDialog& dialog)
{
    QStringList cutOff;
    for (const QLabel* label : dialog.findChildren<QLabel*>()) {
        const QSize wanted = label->wordWrap() ? QSize(0, label->heightForWidth(label->width())) : label->sizeHint();
        if (label->isVisible() && (wanted.width() > label->width() || wanted.height() > label->height()))
            cutOff << label->text();
    }
    for (const QPushButton* button : dialog.findChildren<QPushButton*>()) {
        if (button->isVisible() && !seenInFull(*button))
            cutOff << button->text();
    }
    return cutOff;
}

QString plain(QString text)
{
    return text.remove(u'&');
}

QStringList textsOf(const QList<QAction*>& actions)
{
    QStringList texts;
    for (const QAction* action : actions) {
        if (!action->isSeparator())
            texts << plain(action->text());
    }
    return texts;
}

/// The keys that are underlined in a menu or menu bar.
QString mnemonicsOf(const QList<QAction*>& actions)
{
    QString keys;
    for (const QAction* action : actions) {
        const qsizetype at = action->text().indexOf(u'&');
        if (!action->isSeparator())
            keys += at < 0 ? QChar(u' ') : action->text()[at + 1].toUpper();
    }
    return keys;
}

/// Waits for a shown window with this title, which may hold any letters; its id, or nothing.
QString windowNamed(const QString& title)
{
    for (int i = 0; i < 200; ++i) {
        for (const QByteArray& id : Program::xdotool({"search", "--onlyvisible", "--name", "."}).split('\n')) {
            if (!id.isEmpty() && QString::fromUtf8(Program::xdotool({"getwindowname", id})) == title)
                return QString::fromLatin1(id);
        }
        QTest::qWait(50);
    }
    return {};
}

/// Makes the working folder a copy of an installed one.
void furnish()
{
    const QString project = QStringLiteral(KYTSTUDIO_PROJECT);
    for (const char* name : {"icons", "lib", "data"})
        QVERIFY(QFile::link(project + u'/' + name, name));
    for (const char* name : {"kytstudio.de.qm", "kytstudio.fr.qm"})
        QVERIFY(QFile::link(compiledFolder + u'/' + name, name));
}

void addLanguages()
{
    QTest::addColumn<QString>("locale");
    QTest::newRow("German") << "de";
    QTest::newRow("French") << "fr";
}

} // namespace

class test_translations : public QObject {
    Q_OBJECT

private slots:
    void everyTextOfTheSourcesIsTranslated_data() { addLanguages(); }

    void everyTextOfTheSourcesIsTranslated()
    {
        QFETCH(QString, locale);
        const QList<Entry> kept =
            entriesOf(QStringLiteral(KYTSTUDIO_PROJECT "/translations/kytstudio_%1.ts").arg(locale));
        QVERIFY(kept.size() > 150);

        const WorkingFolder folder;
        QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
        variables.insert("PATH", QStringLiteral(KYTSTUDIO_QT_TOOLS ":") + variables.value("PATH"));
        QProcess update;
        update.setProcessEnvironment(variables);
        update.setProcessChannelMode(QProcess::MergedChannels);
        update.start(KYTSTUDIO_PROJECT "/translations/update.sh", {folder.path("fresh.ts")});
        QVERIFY(update.waitForFinished(120000));
        const QByteArray said = update.readAll();
        QVERIFY2(update.exitStatus() == QProcess::NormalExit && update.exitCode() == 0, said);
        QCOMPARE(keysOf(kept), keysOf(entriesOf("fresh.ts")));

        for (const Entry& entry : kept) {
            QVERIFY2(entry.finished, qPrintable(entry.key()));
            QVERIFY2(!entry.translation.isEmpty(), qPrintable(entry.key()));
        }
    }

    void keysFileNamesFiltersAndFormatsStay_data() { addLanguages(); }

    void keysFileNamesFiltersAndFormatsStay()
    {
        QFETCH(QString, locale);
        static const QRegularExpression wholly("^Ctrl\\+.$|^noname\\.kyt$|^\\.kyt$|\\(\\*\\.ky[tf]\\)$");
        int unchanged = 0;
        for (const Entry& entry :
             entriesOf(QStringLiteral(KYTSTUDIO_PROJECT "/translations/kytstudio_%1.ts").arg(locale))) {
            QVERIFY2(fixedPartsOf(entry.translation) == fixedPartsOf(entry.source), qPrintable(entry.key()));
            QVERIFY2(entry.translation.count('\n') == entry.source.count('\n'), qPrintable(entry.key()));
            QVERIFY2(entry.translation.endsWith(' ') == entry.source.endsWith(' '), qPrintable(entry.key()));
            QVERIFY2(entry.translation.contains('&') == entry.source.contains('&'), qPrintable(entry.key()));
            if (wholly.match(entry.source).hasMatch()) {
                QVERIFY2(entry.translation == entry.source, qPrintable(entry.key()));
                ++unchanged;
            }
        }
        // The keys, the document's name in two classes, the extension, three filters.
        QCOMPARE(unchanged, 14 + 2 + 1 + 3);
    }

    void localesFallBackToTheirLanguage_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("ready");
        QTest::newRow("Germany") << "de_DE"
                                 << "Bereit.";
        QTest::newRow("Austria") << "de_AT"
                                 << "Bereit.";
        QTest::newRow("France") << "fr_FR"
                                << "Prêt.";
        QTest::newRow("Canada") << "fr_CA"
                                << "Prêt.";
        QTest::newRow("Denmark") << "da_DK"
                                 << "Ready.";
        QTest::newRow("none") << "C"
                              << "Ready.";
    }

    void localesFallBackToTheirLanguage()
    {
        QFETCH(QString, locale);
        QFETCH(QString, ready);
        const Language language(locale);
        QCOMPARE(language.loaded, ready != "Ready.");
        const TestWindow window;
        QCOMPARE(message(window), ready);
    }

    void theToolkitsTextsAreInTheSameFile_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("cancel");
        QTest::addColumn<QString>("whatsThis");
        QTest::newRow("German") << "de"
                                << "Abbrechen"
                                << "Direkthilfe";
        QTest::newRow("French") << "fr"
                                << "Annuler"
                                << "Qu'est-ce que c'est ?";
    }

    void theToolkitsTextsAreInTheSameFile()
    {
        QFETCH(QString, locale);
        QFETCH(QString, cancel);
        QFETCH(QString, whatsThis);
        const Language language(locale);
        QMessageBox box(QMessageBox::Question, "title", "text", QMessageBox::Ok | QMessageBox::Cancel);
        QCOMPARE(plain(box.button(QMessageBox::Ok)->text()), QString("OK"));
        QCOMPARE(plain(box.button(QMessageBox::Cancel)->text()), cancel);
        const TestWindow window;
        QCOMPARE(plain(window->fileToolbar->actions().last()->text()).replace(QChar(0x00A0), u' '), whatsThis);
    }

    void menusAreTranslated_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QStringList>("bar");
        QTest::addColumn<QStringList>("file");
        QTest::addColumn<QStringList>("view");
        QTest::addColumn<QStringList>("insert");
        QTest::addColumn<QStringList>("help");
        QTest::newRow("German") << "de" << QStringList({"Datei", "Ansicht", "Einfügen", "Hilfe"})
                                << QStringList({"Neu", "Öffnen …", "Schließen", "Speichern", "Speichern unter …",
                                                "Drucken", "Beenden"})
                                << QStringList({"Werkzeugleiste", "Statusleiste", "MolLib"})
                                << QStringList({"Vorlage einfügen", "Importieren"}) << QStringList("Info …");
        QTest::newRow("French") << "fr" << QStringList({"Fichier", "Affichage", "Insertion", "Aide"})
                                << QStringList({"Nouveau", "Ouvrir…", "Fermer", "Enregistrer", "Enregistrer sous…",
                                                "Imprimer", "Quitter"})
                                << QStringList({"Barre d’outils", "Barre d’état", "MolLib"})
                                << QStringList({"Insérer un modèle", "Importer"}) << QStringList("À propos…");
    }

    void menusAreTranslated()
    {
        QFETCH(QString, locale);
        QFETCH(QStringList, bar);
        QFETCH(QStringList, file);
        QFETCH(QStringList, view);
        QFETCH(QStringList, insert);
        QFETCH(QStringList, help);
        const Language language(locale);
        const TestWindow window;
        QCOMPARE(window->windowTitle(), QString("KytStudio 1.1"));
        QCOMPARE(textsOf(window->menuBar()->actions()), bar);
        QCOMPARE(textsOf(window->pFileMenu->actions()), file);
        QCOMPARE(textsOf(window->pViewMenu->actions()), view);
        QCOMPARE(textsOf(window->pInsertMenu->actions()), insert);
        QCOMPARE(textsOf(window->pHelpMenu->actions()), help);
    }

    void noTwoEntriesOfAMenuShareAnUnderlinedKey_data() { addLanguages(); }

    void noTwoEntriesOfAMenuShareAnUnderlinedKey()
    {
        QFETCH(QString, locale);
        const Language language(locale);
        const TestWindow window;
        for (const QWidget* menu : std::initializer_list<QWidget*>{
                 window->menuBar(), window->pFileMenu, window->pViewMenu, window->pInsertMenu, window->pHelpMenu}) {
            const QString keys = mnemonicsOf(menu->actions());
            QVERIFY2(!keys.contains(' '), qPrintable(keys));
            QVERIFY2(QSet<QChar>(keys.begin(), keys.end()).size() == keys.size(), qPrintable(keys));
        }
    }

    void allShortcutsAreThoseOfTheOriginal_data() { addLanguages(); }

    void allShortcutsAreThoseOfTheOriginal()
    {
        QFETCH(QString, locale);
        const auto shortcuts = [] {
            const TestWindow window;
            QStringList keys;
            for (const QAction* action : window->actions())
                keys << action->shortcut().toString(QKeySequence::PortableText);
            return keys;
        };
        const QStringList original = shortcuts();
        QCOMPARE(original.size(), 30);
        QVERIFY(original.contains("Ctrl+N"));
        const Language language(locale);
        QCOMPARE(shortcuts(), original);
    }

    void aNewDocumentAsksForItsNameAndGetsTheExtension_data() { addLanguages(); }

    void aNewDocumentAsksForItsNameAndGetsTheExtension()
    {
        QFETCH(QString, locale);
        const Language language(locale);
        const WorkingFolder folder;
        const TestWindow window;
        QCOMPARE(window->doc->docName, QString("noname.kyt"));
        ModalSteps steps;
        steps.then<QFileDialog>("Save File dialog",
                                [&](QFileDialog* dialog) { typeNameAndEnter(dialog, folder.path("drawing")); });
        window->slotFileSave();
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(folder.names(), QStringList("drawing.kyt"));
        QCOMPARE(window->doc->docName, folder.path("drawing.kyt"));
    }

    void saveAsAppendsTheExtension_data() { addLanguages(); }

    void saveAsAppendsTheExtension()
    {
        QFETCH(QString, locale);
        const Language language(locale);
        const WorkingFolder folder;
        const TestWindow window;
        ModalSteps steps;
        steps.then<QFileDialog>("Save File dialog",
                                [&](QFileDialog* dialog) { typeNameAndEnter(dialog, folder.path("copy")); });
        window->slotFileSaveAs();
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(folder.names(), QStringList("copy.kyt"));
    }

    void fileDialogsKeepTheirPatterns_data() { addLanguages(); }

    void fileDialogsKeepTheirPatterns()
    {
        QFETCH(QString, locale);
        const Language language(locale);
        const TestWindow window;
        ModalSteps steps;
        const auto expect = [&](const QString& name, const QString& filter) {
            steps.then<QFileDialog>(name, [filter](QFileDialog* dialog) {
                QCOMPARE(dialog->nameFilters(), QStringList(filter));
                pressEscape(dialog);
            });
        };
        expect("Open file dialog", "KytBench (*.kyt)");
        window->slotFileOpen();
        expect("Insert Moleculwe dialog", "KytFragment (*.kyf)");
        window->slotInsertMolecule();
        expect("Import Moleculwe dialog", "KytBench (*.kyt)");
        window->slotImportMolecule();
        const WorkingFolder folder; // takes what a cancelled save writes
        expect("Save File dialog", "KytBench(*.kyt)");
        window->slotFileSaveAs();
        QVERIFY2(steps.done(), steps.trouble());
    }

    void bondDetailKeepsItsNumbers_data() { addLanguages(); }

    void bondDetailKeepsItsNumbers()
    {
        QFETCH(QString, locale);
        const Language language(locale);
        const TestWindow window;
        QVERIFY(window.show());
        window->drawBond->trigger();
        QWidget* paper = window->view->viewport();
        QTest::mouseClick(paper, Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
        QTest::mouseMove(paper, QPoint(70, 50));
        QTest::mouseMove(paper, QPoint(80, 50));
        QTRY_VERIFY2(message(window).contains(": 30.000  ") && message(window).endsWith(": 0.00"),
                     qPrintable(message(window)));
        window->slotSelectViewMode();
        window->zigzagStructure->trigger();
        window->slotZigzagAtomCount(5);
        QVERIFY2(message(window).endsWith(": 5"), qPrintable(message(window)));
    }

    void nothingIsCutOffInTheAtomDialog_data() { addLanguages(); }

    void nothingIsCutOffInTheAtomDialog()
    {
        QFETCH(QString, locale);
        const Language language(locale);
        KytAtomProperties dialog;
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QCOMPARE(cutOffIn(dialog), QStringList());
        for (const QLabel* label : dialog.findChildren<QLabel*>()) {
            QVERIFY2(seenInFull(*label), qPrintable(label->text()));
            QVERIFY2(QFontInfo(label->font()).pixelSize() >= 11, qPrintable(label->text()));
        }
        QVERIFY(plain(dialog.windowTitle()) != "Atom Properties");
    }

    void nothingIsCutOffInTheBondDialog_data() { addLanguages(); }

    void nothingIsCutOffInTheBondDialog()
    {
        QFETCH(QString, locale);
        const Language language(locale);
        KytBondProperties dialog;
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QCOMPARE(cutOffIn(dialog), QStringList());
        QVERIFY(seenInFull(*dialog.textLabel1));
        QVERIFY(QFontInfo(dialog.textLabel1->font()).pixelSize() >= 11);
        QVERIFY(plain(dialog.windowTitle()) != "Bond Properties");
    }

    void nothingIsCutOffInTheQuestions_data() { addLanguages(); }

    void nothingIsCutOffInTheQuestions()
    {
        QFETCH(QString, locale);
        const Language language(locale);
        const TestWindow window;
        const auto look = [](QMessageBox* box) { QCOMPARE(cutOffIn(*box), QStringList()); };
        QCOMPARE(inEachQuestion(window, look), QString());
    }

    void nothingIsCutOffInTheFileDialogs_data() { addLanguages(); }

    void nothingIsCutOffInTheFileDialogs()
    {
        QFETCH(QString, locale);
        const Language language(locale);
        const TestWindow window;
        const auto look = [](QFileDialog* dialog) { QCOMPARE(cutOffIn(*dialog), QStringList()); };
        QCOMPARE(inEachFileDialog(window, look), QString());
    }

    void allButtonsHaveRoomInTheWindow_data() { addLanguages(); }

    void allButtonsHaveRoomInTheWindow()
    {
        QFETCH(QString, locale);
        const Language language(locale);
        const TestWindow window;
        QVERIFY(window.show());
        QCOMPARE(window->size(), QSize(450, 400));
        for (const QToolBar* bar : window->findChildren<QToolBar*>()) {
            for (QAction* action : bar->actions())
                QVERIFY2(bar->widgetForAction(action)->isVisible(), qPrintable(action->text()));
        }
        QVERIFY(!window->menuBar()->findChild<QToolButton*>("qt_menubar_ext_button")->isVisible());
    }

    void theProgramSpeaksTheLanguageOfItsLocale_data()
    {
        QTest::addColumn<QStringList>("environment");
        QTest::addColumn<QString>("menuKeys"); ///< to File, Open and Help, About
        QTest::addColumn<QStringList>("titles");
        const QStringList english({"Choose a File", "About...", "Quit !"});
        const QStringList german({"Datei auswählen", "Über KytStudio", "Beenden"});
        const QStringList french({"Choisir un fichier", "À propos de KytStudio", "Quitter"});
        QTest::newRow("German") << QStringList({"LC_ALL=de_DE.UTF-8", "LANGUAGE="}) << "d f h i" << german;
        QTest::newRow("French") << QStringList({"LC_ALL=fr_FR.UTF-8", "LANGUAGE="}) << "f o d p" << french;
        QTest::newRow("Danish, for which there is nothing")
            << QStringList({"LC_ALL=da_DK.UTF-8", "LANGUAGE="}) << "f o h a" << english;
        QTest::newRow("German messages in a French setting")
            << QStringList({"LC_ALL=", "LANG=fr_FR.UTF-8", "LC_MESSAGES=de_DE.UTF-8", "LANGUAGE="}) << "d f h i"
            << german;
    }

    // The menus are read by their underlined keys, the dialogs by their titles.
    void theProgramSpeaksTheLanguageOfItsLocale()
    {
        QFETCH(QStringList, environment);
        QFETCH(QString, menuKeys);
        QFETCH(QStringList, titles);
        const WorkingFolder folder;
        furnish();
        Program program(folder.path(), environment);
        const QString window = Program::windowTitled("KytStudio 1.1");
        QVERIFY(Program::hasKeyboard(window));
        const QStringList keys = menuKeys.split(' ');
        for (int i = 0; i < 2; ++i) {
            Program::press("alt+" + keys[2 * i]);
            Program::press(keys[2 * i + 1]);
            const QString dialog = windowNamed(titles[i]);
            QVERIFY2(!dialog.isEmpty(), qPrintable(titles[i]));
            QVERIFY(Program::hasKeyboard(dialog));
            Program::press("Escape");
            QVERIFY(Program::hasKeyboard(window));
        }
        Program::press("ctrl+q");
        const QString question = windowNamed(titles[2]);
        QVERIFY(Program::hasKeyboard(question));
        Program::press("Return");
        QVERIFY2(program.endedWell(), program.output);
        QCOMPARE(program.output, QByteArray());
    }
};

int main(int argc, char** argv)
{
    return runTests<test_translations>(argc, argv);
}

#include "test_translations.moc"
