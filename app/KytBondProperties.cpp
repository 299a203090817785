#include "app/KytBondProperties.h"

#include "app/FittedText.h"
#include "app/PlacedWidget.h"
#include "app/dialogicon.h"
#include "bonds/KytStereoBond.h"
#include "doc/Numbers.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

KytBondProperties::KytBondProperties(QWidget* parent, const char* name, bool modal, Qt::WindowFlags fl)
    : QDialog(parent, fl)
    , pushButton1(placed<QPushButton>(this, "pushButton1", {200, 120, 70, 30}, Qt::PointingHandCursor))
    , pushButton2(placed<QPushButton>(this, "pushButton2", {50, 120, 70, 30}, Qt::PointingHandCursor))
    , lineEdit_angle(placed<QLineEdit>(this, "lineEdit_angle", {200, 50, 70, 23}, Qt::IBeamCursor))
    , textLabel1(placed<QLabel>(this, "textLabel1", {30, 40, 170, 40}))
    , image0(QPixmap::fromImage(dialogIcon()))
{
    setModal(modal);
    setObjectName(QString::fromLatin1(name ? name : "KytBondProperties"));
    setWindowIcon(image0);
    KytBondProperties::languageChange();
    resize(QSize(325, 186).expandedTo(minimumSizeHint()));

    pushButton1->setAutoDefault(true); // so that Enter on it cancels
    pushButton2->setDefault(true);
    setTabOrder(lineEdit_angle, pushButton2);
    setTabOrder(pushButton2, pushButton1);
    lineEdit_angle->setFocus();

    connect(pushButton1, &QPushButton::released, this, &QDialog::close);
    connect(pushButton2, &QPushButton::released, this, &KytBondProperties::onOK);
}

KytBondProperties::~KytBondProperties() = default;

void KytBondProperties::languageChange()
{
    setWindowTitle(tr("Bond Properties"));
    pushButton1->setText(tr("cancel"));
    pushButton2->setText(tr("ok"));
    lineEdit_angle->setToolTip(QString());
    textLabel1->setText(tr("Bond Projection Angle"));
    fitHeight(lineEdit_angle);
    fitText(textLabel1);
    lineEdit_angle->setAccessibleName(textLabel1->text());
}

void KytBondProperties::setBond(KytStereoBond* b)
{
    bond = b;
    if (b->canvas())
        connect(b->canvas(), &QCanvas::itemGone, this, [this](QCanvasItem* item) {
            if (item == bond)
                bond = nullptr;
        });
    lineEdit_angle->setText(QString::number(b->getAngle(), 'f', 2));
}

/// The angle entered is read as an integer.
void KytBondProperties::onOK()
{
    if (bond)
        bond->setAngle(static_cast<float>(integerPrefix(lineEdit_angle->text())));
    close();
}
