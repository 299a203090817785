#pragma once

#include <QDialog>
#include <QPixmap>

class KytStereoBond;
class QLabel;
class QLineEdit;
class QPushButton;

/// The dialog in which the projection angle of one wedge is edited.
class KytBondProperties : public QDialog {
    Q_OBJECT

public:
    /// Without a `name`, the object name is "KytBondProperties".
    explicit KytBondProperties(QWidget* parent = nullptr, const char* name = nullptr, bool modal = false,
                               Qt::WindowFlags fl = {});
    ~KytBondProperties() override;

    QPushButton* pushButton1; ///< cancel
    QPushButton* pushButton2; ///< ok
    QLineEdit* lineEdit_angle;
    QLabel* textLabel1;
    KytStereoBond* bond = nullptr; ///< the wedge edited; not owned, null again once it is gone
    QPixmap image0;                ///< the window's icon

public slots:
    /// Shows the angle of `b` (not null) with two decimals.
    virtual void setBond(KytStereoBond* b);

protected slots:
    virtual void languageChange();

private slots:
    virtual void onOK();
};
