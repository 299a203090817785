#include "app/StateLabel.h"

#include <QEvent>
#include <QSizeGrip>
#include <QStatusBar>

#include <algorithm>

namespace {

constexpr int apart = 16; // pixels between a message and the text
constexpr int least = 40; // pixels; a narrower text is hidden

} // namespace

StateLabel::StateLabel(QStatusBar* bar)
    : QLabel(bar)
    , bar(bar)
{
    setForegroundRole(QPalette::PlaceholderText);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setTextFormat(Qt::PlainText);
    setMargin(0);
    // The bar keeps the height that it has without the label, so that the view keeps its size.
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    setFixedWidth(0);
    bar->addPermanentWidget(this);
    bar->installEventFilter(this);
    connect(bar, &QStatusBar::messageChanged, this, &StateLabel::fit);
}

void StateLabel::showText(const QString& text)
{
    if (text == whole)
        return;
    whole = text;
    fit();
}

bool StateLabel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        fit();
    return QLabel::eventFilter(watched, event);
}

void StateLabel::fit()
{
    const QString message = bar->currentMessage();
    const auto* grip = bar->findChild<QSizeGrip*>();
    const int taken = (message.isEmpty() ? 0 : bar->fontMetrics().horizontalAdvance(message) + apart)
        + (grip && bar->isSizeGripEnabled() ? grip->sizeHint().width() : 0) + apart;
    const int wanted = fontMetrics().horizontalAdvance(whole) + 1;
    const int width = std::min(wanted, bar->width() - taken);
    const bool fits = width >= std::min(wanted, least);
    setFixedWidth(fits ? width : 0);
    setText(fits ? fontMetrics().elidedText(whole, Qt::ElideLeft, width) : QString());
    setToolTip(text() == whole ? QString() : whole);
}
