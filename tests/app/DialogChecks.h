#pragma once

#include <QApplication>
#include <QDialog>
#include <QFontMetrics>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionButton>
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

/// How many pixels of a field of this size, font and style `text` colours.
inline int inkOf(const QString& text, const QLineEdit& like, const QSize& size)
{
    const auto picture = [&](const QString& shown) {
        QLineEdit field;
        field.setFont(like.font());
        field.setFrame(like.hasFrame());
        field.setFocusPolicy(Qt::NoFocus);
        field.resize(size);
        field.setText(shown);
        return field.grab().toImage().convertToFormat(QImage::Format_RGB32);
    };
    const QImage empty = picture(QString());
    const QImage filled = picture(text);
    int ink = 0;
    for (int y = 0; y < empty.height(); ++y) {
        for (int x = 0; x < empty.width(); ++x)
            ink += empty.pixel(x, y) != filled.pixel(x, y);
    }
    return ink;
}

/// Whether `text` is seen in the field as it is in one with room to spare.
inline bool seenInFull(const QLineEdit& field, const QString& text)
{
    const int ink = inkOf(text, field, field.size());
    return ink > 0 && ink == inkOf(text, field, field.size() + QSize(200, 40));
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
