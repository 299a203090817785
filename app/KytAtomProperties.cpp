#include "app/KytAtomProperties.h"

#include "app/FittedText.h"
#include "app/PlacedWidget.h"
#include "app/dialogicon.h"
#include "model/KytAtom.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

constexpr int colorDigits = 3;

} // namespace

KytAtomProperties::KytAtomProperties(QWidget* parent, const char* name, bool modal, Qt::WindowFlags fl)
    : QDialog(parent, fl)
    , image0(dialogIcon())
    , pushButton1(placed<QPushButton>(this, "pushButton1", {410, 140, 93, 30}, Qt::PointingHandCursor))
    , pushButton2(placed<QPushButton>(this, "pushButton2", {50, 140, 93, 30}, Qt::PointingHandCursor))
    , textLabel1(placed<QLabel>(this, "textLabel1", {50, 20, 64, 20}))
    , textLabel2(placed<QLabel>(this, "textLabel2", {50, 70, 64, 20}))
    , textLabel2_1(placed<QLabel>(this, "textLabel2_1", {80, 100, 30, 20}))
    , textLabel2_2(placed<QLabel>(this, "textLabel2_2", {190, 100, 36, 20}))
    , textLabel2_3(placed<QLabel>(this, "textLabel2_3", {320, 100, 30, 20}))
    , lineEdit_name(placed<QLineEdit>(this, "lineEdit_name", {130, 20, 125, 23}, Qt::IBeamCursor))
    , lineEdit_colorRed(placed<QLineEdit>(this, "lineEdit_colorRed", {120, 100, 40, 23}, Qt::IBeamCursor))
    , lineEdit_colorGreen(placed<QLineEdit>(this, "lineEdit_colorGreen", {240, 100, 40, 23}, Qt::IBeamCursor))
    , lineEdit_colorBlue(placed<QLineEdit>(this, "lineEdit_colorBlue", {360, 100, 40, 23}, Qt::IBeamCursor))
{
    setModal(modal);
    setObjectName(QString::fromLatin1(name ? name : "KytAtomProperties"));
    setWindowIcon(QPixmap::fromImage(image0));
    for (QLineEdit* edit : {lineEdit_colorRed, lineEdit_colorGreen, lineEdit_colorBlue})
        edit->setMaxLength(colorDigits);
    KytAtomProperties::languageChange();
    resize(QSize(550, 204).expandedTo(minimumSizeHint()));

    pushButton1->setAutoDefault(true); // so that Enter on it cancels
    pushButton2->setDefault(true);
    const QList<QWidget*> order{lineEdit_name,      lineEdit_colorRed, lineEdit_colorGreen,
                                lineEdit_colorBlue, pushButton2,       pushButton1};
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
    lineEdit_name->setFocus();

    connect(pushButton1, &QPushButton::released, this, &QDialog::close);
    connect(pushButton2, &QPushButton::released, this, &KytAtomProperties::onOK);
}

KytAtomProperties::~KytAtomProperties() = default;

void KytAtomProperties::languageChange()
{
    setWindowTitle(tr("Atom Properties"));
    pushButton1->setText(tr("cancel"));
    pushButton2->setText(tr("ok"));
    textLabel1->setText(tr("<b>Atom </b>"));
    textLabel2->setText(tr("<b>Color :</b>"));
    textLabel2_3->setText(tr("Blue"));
    textLabel2_2->setText(tr("Green"));
    textLabel2_1->setText(tr("Red"));
    lineEdit_name->setAccessibleName(tr("Symbol"));
    lineEdit_colorRed->setAccessibleName(tr("Red, 0 to 255"));
    lineEdit_colorGreen->setAccessibleName(tr("Green, 0 to 255"));
    lineEdit_colorBlue->setAccessibleName(tr("Blue, 0 to 255"));
    for (QLineEdit* edit : {lineEdit_name, lineEdit_colorRed, lineEdit_colorGreen, lineEdit_colorBlue})
        fitHeight(edit);
    fitTexts({textLabel1, textLabel2});
    fitTexts({textLabel2_1, textLabel2_2, textLabel2_3});
}

void KytAtomProperties::setAtom(KytAtom* a)
{
    atom = a;
    if (a->canvas())
        connect(a->canvas(), &QCanvas::itemGone, this, [this](QCanvasItem* item) {
            if (item == atom)
                atom = nullptr;
        });
    lineEdit_name->setText(a->getSymbol());
    lineEdit_colorRed->setText(a->_atomColor[0]);
    lineEdit_colorGreen->setText(a->_atomColor[1]);
    lineEdit_colorBlue->setText(a->_atomColor[2]);
}

void KytAtomProperties::onOK()
{
    if (atom) {
        atom->setSymbol(lineEdit_name->text());
        atom->_atomColor[0] = lineEdit_colorRed->text();
        atom->_atomColor[1] = lineEdit_colorGreen->text();
        atom->_atomColor[2] = lineEdit_colorBlue->text();
    }
    close();
}
