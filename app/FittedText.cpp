#include "app/FittedText.h"

#include <QApplication>
#include <QLabel>

namespace {

constexpr int smallestFont = 5; // pixels

bool showsAll(const QLabel* label)
{
    const QSize wanted = label->sizeHint();
    return wanted.width() <= label->width() && wanted.height() <= label->height();
}

} // namespace

void fitText(QLabel* label)
{
    QFont font = QApplication::font(label);
    label->setFont(font);
    for (int size = label->fontInfo().pixelSize(); size > smallestFont && !showsAll(label); --size) {
        font.setPixelSize(size - 1);
        label->setFont(font);
    }
}
