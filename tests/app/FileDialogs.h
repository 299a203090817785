#pragma once

#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

/// Types `name` over what stands in the dialog's name field.
inline void typeName(QFileDialog* dialog, const QString& name)
{
    auto* field = dialog->findChild<QLineEdit*>("fileNameEdit");
    QVERIFY(field);
    field->setFocus();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, name);
}

inline void pressEnter(QFileDialog* dialog)
{
    QTest::keyClick(dialog->findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
}

inline void typeNameAndEnter(QFileDialog* dialog, const QString& name)
{
    typeName(dialog, name);
    pressEnter(dialog);
}

inline void pressEscape(QFileDialog* dialog)
{
    QTest::keyClick(dialog, Qt::Key_Escape);
}
