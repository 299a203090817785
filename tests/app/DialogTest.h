#pragma once

#include "DialogChecks.h"
#include "TestWindow.h"

#include <memory>
#include <optional>

/// What the two property dialogs have in common. Each has a class of its own, which says what is particular.
class DialogTest : public QObject {
    Q_OBJECT

protected:
    /// A widget of the dialog, in the order of the focus; `text` is that of a label or a button.
    struct Part {
        QWidget* member;
        const char* name;
        QRect place;
        Qt::CursorShape cursor;
        QString text = {};
    };
    /// What is typed into the fields with these names.
    using Texts = QList<std::pair<const char*, QString>>;
    using Leave = std::function<void(QDialog&)>;

    virtual std::unique_ptr<QDialog> made(QWidget* parent = nullptr, const char* name = nullptr, bool modal = false,
                                          Qt::WindowFlags flags = {}) const = 0;
    virtual const char* className() const = 0;
    virtual QString title() const = 0;
    virtual QSize size() const = 0;
    virtual QImage icon(const QDialog& dialog) const = 0;
    virtual QList<Part> parts(const QDialog& dialog) const = 0;
    virtual const char* setter() const = 0;
    /// The longest text that the field is made for.
    virtual QString longestText(const QLineEdit& field) const = 0;

    /// Draws what the dialog is to edit.
    virtual void draw() = 0;
    virtual void edit(QDialog& dialog) const = 0;
    virtual const void* edited(const QDialog& dialog) const = 0;
    /// What ok may change.
    virtual QStringList stored() const = 0;
    /// An edit, and what is stored after it.
    virtual Texts otherTexts() const = 0;
    virtual QStringList otherStored() const = 0;
    /// The ways in which what is edited can go.
    virtual QList<std::pair<const char*, std::function<void()>>> waysToGo() = 0;

    static QPushButton* button(const QDialog& dialog, const char* name) { return dialog.findChild<QPushButton*>(name); }
    static void ok(QDialog& dialog) { QTest::mouseClick(button(dialog, "pushButton2"), Qt::LeftButton); }
    static void cancel(QDialog& dialog) { QTest::mouseClick(button(dialog, "pushButton1"), Qt::LeftButton); }

    static void retype(const QDialog& dialog, const Texts& texts)
    {
        for (const auto& [name, text] : texts) {
            auto* field = dialog.findChild<QLineEdit*>(name);
            field->setFocus();
            QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(field, Qt::Key_Delete);
            QTest::keyClicks(field, text);
        }
    }

    /// Runs a dialog on what is drawn, types and leaves it. Whether it closes then and is gone from the screen.
    bool run(const Texts& texts, const Leave& leave = ok) const
    {
        const std::unique_ptr<QDialog> dialog = made();
        edit(*dialog);
        const bool closed = runAndAct(*dialog, [&] {
            retype(*dialog, texts);
            leave(*dialog);
        });
        return closed && !dialog->isVisible();
    }

    QStringList fields() const
    {
        const std::unique_ptr<QDialog> dialog = made();
        QStringList names;
        for (const Part& part : parts(*dialog))
            if (qobject_cast<QLineEdit*>(part.member))
                names << part.name;
        return names;
    }

    /// The title of the dialog, and the texts of its labels and buttons.
    QStringList textsIn(const QDialog& dialog) const
    {
        QStringList texts{dialog.windowTitle()};
        for (const Part& part : parts(dialog))
            if (!part.text.isEmpty())
                texts << part.member->property("text").toString();
        return texts;
    }

    /// The same as they should be, each put into `form` in the place of "%1".
    QStringList expectedTexts(const QDialog& dialog, const QString& form = "%1") const
    {
        QStringList texts{form.arg(title())};
        for (const Part& part : parts(dialog))
            if (!part.text.isEmpty())
                texts << form.arg(part.text);
        return texts;
    }

    std::optional<Drawing> drawing;

private slots:
    void init()
    {
        drawing.emplace();
        draw();
    }
    void cleanup() { drawing.reset(); }

    void theObjectNameIsTheClassNameWithoutAName() { QCOMPARE(made()->objectName(), QString(className())); }

    void theObjectNameIsTheNameGiven() { QCOMPARE(made(nullptr, "a name")->objectName(), QString("a name")); }

    void theFourArgumentsGoToTheDialog()
    {
        QWidget parent;
        const std::unique_ptr<QDialog> dialog = made(&parent, "name", true, Qt::Tool);
        QCOMPARE(dialog->parentWidget(), &parent);
        QVERIFY(dialog->isModal());
        QCOMPARE(dialog->windowType(), Qt::Tool);
    }

    void itIsNotModalAndEditsNothingByItself()
    {
        const std::unique_ptr<QDialog> dialog = made();
        QVERIFY(!dialog->parentWidget());
        QVERIFY(!dialog->isModal());
        QVERIFY(!edited(*dialog));
    }

    void theWindowShowsTheIcon()
    {
        const std::unique_ptr<QDialog> dialog = made();
        const QImage expected = icon(*dialog);
        QVERIFY(!expected.isNull());
        QVERIFY(!dialog->windowIcon().isNull());
        QVERIFY(samePicture(dialog->windowIcon().pixmap(expected.size()).toImage(), expected));
    }

    void eachWidgetHasItsPlace_data()
    {
        QTest::addColumn<int>("index");
        const std::unique_ptr<QDialog> dialog = made();
        int index = 0;
        for (const Part& part : parts(*dialog))
            QTest::newRow(part.name) << index++;
    }

    void eachWidgetHasItsPlace()
    {
        QFETCH(int, index);
        const std::unique_ptr<QDialog> dialog = made();
        const Part part = parts(*dialog)[index];
        QCOMPARE(part.member->objectName(), QString(part.name));
        QCOMPARE(part.member->parentWidget(), static_cast<QWidget*>(dialog.get()));
        QCOMPARE(part.member->geometry(), part.place);
        QCOMPARE(part.member->cursor().shape(), part.cursor);
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
        QCOMPARE(part.member->geometry(), part.place);
        QVERIFY(part.member->isVisible());
    }

    void thereAreNoOtherWidgets()
    {
        const std::unique_ptr<QDialog> dialog = made();
        QCOMPARE(dialog->findChildren<QWidget*>(Qt::FindDirectChildrenOnly).size(), parts(*dialog).size());
    }

    void theSizeIsFixed()
    {
        const std::unique_ptr<QDialog> dialog = made();
        QCOMPARE(dialog->size(), size());
        edit(*dialog);
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
        QCOMPARE(dialog->size(), size());
    }

    void theTexts()
    {
        const std::unique_ptr<QDialog> dialog = made();
        QCOMPARE(textsIn(*dialog), expectedTexts(*dialog));
    }

    void languageChangeRestoresTheTextsAndKeepsTheFields()
    {
        const std::unique_ptr<QDialog> dialog = made();
        edit(*dialog);
        QStringList before;
        for (const QLineEdit* field : dialog->findChildren<QLineEdit*>())
            before << field->text();
        dialog->setWindowTitle("x");
        for (QLabel* label : dialog->findChildren<QLabel*>())
            label->setText("x");
        for (QPushButton* button : dialog->findChildren<QPushButton*>())
            button->setText("x");
        for (QLineEdit* field : dialog->findChildren<QLineEdit*>())
            field->setToolTip("x");
        QVERIFY(QMetaObject::invokeMethod(dialog.get(), "languageChange"));
        QCOMPARE(textsIn(*dialog), expectedTexts(*dialog));
        QStringList after;
        for (const QLineEdit* field : dialog->findChildren<QLineEdit*>())
            after << field->text();
        QCOMPARE(after, before);
    }

    void theTextsAreTranslated()
    {
        const BracketTranslator translator;
        const std::unique_ptr<QDialog> dialog = made();
        QCOMPARE(textsIn(*dialog), expectedTexts(*dialog, "[%1]"));
    }

    void everyTextIsSeenInFull_data()
    {
        QTest::addColumn<int>("points");
        QTest::newRow("the editor's font") << 12;
        QTest::newRow("a small font") << 8;
        QTest::newRow("a large font") << 15;
    }

    void everyTextIsSeenInFull()
    {
        QFETCH(int, points);
        const QFont before = QApplication::font();
        const auto putBack = qScopeGuard([&] { QApplication::setFont(before); });
        QApplication::setFont(QFont("helvetica", points));
        const std::unique_ptr<QDialog> dialog = made();
        edit(*dialog);
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
        for (const QLabel* label : dialog->findChildren<QLabel*>())
            QVERIFY2(seenInFull(*label), qPrintable(label->objectName()));
        for (const QPushButton* button : dialog->findChildren<QPushButton*>())
            QVERIFY2(seenInFull(*button), qPrintable(button->objectName()));
        if (points <= 12) {
            for (const QLineEdit* field : dialog->findChildren<QLineEdit*>())
                QVERIFY2(seenInFull(*field, longestText(*field)), qPrintable(field->objectName()));
        }
    }

    void slotsHaveTheirAccess()
    {
        const std::unique_ptr<QDialog> dialog = made();
        QCOMPARE(accessOf(*dialog, setter()), int(QMetaMethod::Public));
        QCOMPARE(accessOf(*dialog, "languageChange()"), int(QMetaMethod::Protected));
        QCOMPARE(accessOf(*dialog, "onOK()"), int(QMetaMethod::Private));
    }

    void okStoresWhatIsTyped()
    {
        QVERIFY(stored() != otherStored());
        QVERIFY(run(otherTexts()));
        QCOMPARE(stored(), otherStored());
    }

    void leavingOtherwiseChangesNothing_data()
    {
        QTest::addColumn<Leave>("leave");
        QTest::newRow("cancel") << Leave(cancel);
        QTest::newRow("close button") << Leave([](QDialog& dialog) { dialog.windowHandle()->close(); });
        QTest::newRow("escape") << Leave(
            [](QDialog& dialog) { QTest::keyClick(dialog.focusWidget(), Qt::Key_Escape); });
    }

    void leavingOtherwiseChangesNothing()
    {
        QFETCH(Leave, leave);
        const QStringList before = stored();
        QVERIFY(run(otherTexts(), leave));
        QCOMPARE(stored(), before);
    }

    void enterIsOkInEveryField_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<int>("key");
        for (const QString& field : fields()) {
            QTest::addRow("%s", qPrintable(field)) << field << int(Qt::Key_Return);
            QTest::addRow("%s, key pad", qPrintable(field)) << field << int(Qt::Key_Enter);
        }
    }

    void enterIsOkInEveryField()
    {
        QFETCH(QString, field);
        QFETCH(int, key);
        QVERIFY(run(otherTexts(), [&](QDialog& dialog) {
            auto* focused = dialog.findChild<QLineEdit*>(field);
            focused->setFocus();
            QTest::keyClick(focused, Qt::Key(key));
        }));
        QCOMPARE(stored(), otherStored());
    }

    void theSpaceBarPressesTheFocusedButton_data()
    {
        QTest::addColumn<bool>("ok");
        QTest::newRow("ok") << true;
        QTest::newRow("cancel") << false;
    }

    void theSpaceBarPressesTheFocusedButton()
    {
        QFETCH(bool, ok);
        const QStringList expected = ok ? otherStored() : stored();
        QVERIFY(run(otherTexts(), [&](QDialog& dialog) {
            QPushButton* focused = button(dialog, ok ? "pushButton2" : "pushButton1");
            focused->setFocus();
            QTest::keyClick(focused, Qt::Key_Space);
        }));
        QCOMPARE(stored(), expected);
    }

    void aButtonActsWhenItIsReleased()
    {
        const QStringList before = stored();
        bool openWhilePressed = false;
        QVERIFY(run(otherTexts(), [&](QDialog& dialog) {
            QTest::mousePress(button(dialog, "pushButton2"), Qt::LeftButton);
            openWhilePressed = dialog.isVisible() && stored() == before;
            QTest::mouseRelease(button(dialog, "pushButton2"), Qt::LeftButton);
        }));
        QVERIFY(openWhilePressed);
        QCOMPARE(stored(), otherStored());
    }

    void theTabKeyGoesThroughTheFieldsFirst()
    {
        const QStringList names = fields();
        QStringList order;
        QVERIFY(run({}, [&](QDialog& dialog) {
            for (qsizetype i = 0; i < names.size() + 3; ++i) {
                order << dialog.focusWidget()->objectName();
                QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
            }
            dialog.reject();
        }));
        QCOMPARE(order.first(names.size()), names);
        QStringList buttons = order.sliced(names.size(), 2);
        buttons.sort();
        QCOMPARE(buttons, QStringList({"pushButton1", "pushButton2"}));
        QCOMPARE(order.last(), names.first());
    }

    void whatGoesWhileTheDialogIsOpenIsForgotten_data()
    {
        QTest::addColumn<int>("way");
        QTest::addColumn<Leave>("leave");
        int index = 0;
        for (const auto& [what, go] : waysToGo()) {
            QTest::addRow("%s, then ok", what) << index << Leave(ok);
            QTest::addRow("%s, then cancel", what) << index++ << Leave(cancel);
        }
    }

    void whatGoesWhileTheDialogIsOpenIsForgotten()
    {
        QFETCH(int, way);
        QFETCH(Leave, leave);
        QCanvasItemList left;
        QVERIFY(run({}, [&](QDialog& dialog) {
            waysToGo()[way].second();
            QVERIFY(!edited(dialog));
            left = drawing->canvas()->allItems();
            leave(dialog);
        }));
        QCOMPARE(drawing->canvas()->allItems(), left);
    }

    void aCanvasThatGoesWhileTheDialogIsOpenTakesWhatIsEdited()
    {
        QVERIFY(run({}, [&](QDialog& dialog) {
            drawing->freeCanvas();
            QVERIFY(!edited(dialog));
            ok(dialog);
        }));
        QVERIFY(!drawing->canvas());
    }
};
