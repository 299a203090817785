#include "app/FittedText.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QStyleOptionFrame>

#include <algorithm>

namespace {

constexpr int minFontSize = 5; // pixels

bool showsAll(const QLabel* label)
{
    const QSize needed = label->sizeHint();
    return needed.width() <= label->width() && needed.height() <= label->height();
}

} // namespace

void fitText(QLabel* label)
{
    fitTexts({label});
}

void fitTexts(const QList<QLabel*>& labels)
{
    const auto setSize = [&](int size) {
        for (QLabel* label : labels) {
            QFont font = label->font();
            font.setPixelSize(size);
            label->setFont(font);
        }
    };
    int size = minFontSize;
    for (QLabel* label : labels) {
        label->setFont(QApplication::font(label));
        size = std::max(size, label->fontInfo().pixelSize());
    }
    while (size > minFontSize && !std::all_of(labels.begin(), labels.end(), showsAll))
        setSize(--size);
}

void fitHeight(QLineEdit* edit)
{
    QStyleOptionFrame option;
    option.initFrom(edit);
    option.lineWidth = edit->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, edit);
    const int room = edit->style()->subElementRect(QStyle::SE_LineEditContents, &option, edit).height();
    QFont font = QApplication::font(edit);
    for (int size = QFontInfo(font).pixelSize(); size > minFontSize && QFontMetrics(font).height() > room; --size)
        font.setPixelSize(size);
    edit->setFont(font);
}
