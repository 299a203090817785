#pragma once

#include <QApplication>
#include <QDialog>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionFrame>
#include <QTest>
#include <QTextDocument>
#include <QTimer>

#include <functional>

/// The room that the text of a label takes in the label's own font, in pixels.
inline QSize textSize(const QLabel& label)
{
    if (!Qt::mightBeRichText(label.text()))
        return QFontMetrics(label.font()).size(Qt::TextSingleLine, label.text());
    QTextDocument document;
    document.setDefaultFont(label.font());
    document.setDocumentMargin(0);
    document.setHtml(label.text());
    return document.size().toSize();
}

inline bool seenInFull(const QLabel& label)
{
    const QSize room = label.contentsRect().size() - QSize(2 * label.margin(), 2 * label.margin());
    const QSize text = textSize(label);
    return text.width() <= room.width() && text.height() <= room.height();
}

inline bool seenInFull(const QPushButton& button)
{
    QStyleOptionButton option;
    option.initFrom(&button);
    option.text = button.text();
    const QRect room = button.style()->subElementRect(QStyle::SE_PushButtonContents, &option, &button);
    const QSize text = QFontMetrics(button.font()).size(Qt::TextShowMnemonic, button.text());
    return text.width() <= room.width() && text.height() <= room.height();
}

/// Whether `text` could be read without scrolling in the field.
inline bool seenInFull(const QLineEdit& field, const QString& text)
{
    QStyleOptionFrame option;
    option.initFrom(&field);
    option.lineWidth = field.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &field);
    const QRect room = field.style()->subElementRect(QStyle::SE_LineEditContents, &option, &field);
    const QFontMetrics metrics(field.font());
    return metrics.horizontalAdvance(text) <= room.width() && metrics.height() <= room.height();
}

/// Runs `dialog` until it closes and acts on it with `act` once it has the keyboard. False when it had to be closed
/// from here because `act` did not make it close.
inline bool runAndAct(QDialog& dialog, const std::function<void()>& act)
{
    bool active = false;
    bool closedByItself = true;
    QTimer::singleShot(0, &dialog, [&] {
        active = QTest::qWaitForWindowActive(&dialog);
        act();
    });
    QTimer::singleShot(15000, &dialog, [&] {
        closedByItself = false;
        dialog.reject();
    });
    dialog.exec();
    return active && closedByItself;
}

/// The access of the method with this signature that the class of `dialog` itself declares; -1 when there is none.
inline int accessOf(const QDialog& dialog, const char* signature)
{
    const QMetaObject* type = dialog.metaObject();
    const int index = type->indexOfMethod(signature);
    if (index < type->methodOffset() || type->method(index).methodType() != QMetaMethod::Slot)
        return -1;
    return type->method(index).access();
}
