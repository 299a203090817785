#pragma once

#include <QDialog>
#include <QImage>

class KytAtom;
class QLabel;
class QLineEdit;
class QPushButton;

/// The dialog in which the symbol and the colour of one atom are edited.
class KytAtomProperties : public QDialog {
    Q_OBJECT

public:
    /// Without a `name`, the object name is "KytAtomProperties".
    explicit KytAtomProperties(QWidget* parent = nullptr, const char* name = nullptr, bool modal = false,
                               Qt::WindowFlags fl = {});
    ~KytAtomProperties() override;

    QImage image0;            ///< the window's icon
    QPushButton* pushButton1; ///< cancel
    QPushButton* pushButton2; ///< ok
    QLabel* textLabel1;
    QLabel* textLabel2;
    QLabel* textLabel2_1;
    QLabel* textLabel2_2;
    QLabel* textLabel2_3;
    QLineEdit* lineEdit_name;
    QLineEdit* lineEdit_colorRed;
    QLineEdit* lineEdit_colorGreen;
    QLineEdit* lineEdit_colorBlue;
    KytAtom* atom = nullptr; ///< the atom edited; not owned, null again once it is gone

public slots:
    /// Shows the symbol and colour of `a` (not null).
    virtual void setAtom(KytAtom* a);

protected slots:
    virtual void languageChange();

private slots:
    virtual void onOK();
};
