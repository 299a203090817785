#pragma once

#include <QDialog>
#include <QPixmap>

class KytStereoBond;
class QLabel;
class QLineEdit;
class QPushButton;

/// A dialog for editing the projection angle of a wedge.
class KytBondProperties : public QDialog {
    Q_OBJECT

public:
    /// If `name` is null, the object name is "KytBondProperties".
    explicit KytBondProperties(QWidget* parent = nullptr, const char* name = nullptr, bool modal = false,
                               Qt::WindowFlags fl = {});
    ~KytBondProperties() override;

    QPushButton* pushButton1; ///< cancel
    QPushButton* pushButton2; ///< ok
    QLineEdit* lineEdit_angle;
    QLabel* textLabel1;
    KytStereoBond* bond = nullptr; ///< the wedge being edited; not owned, null again after it was deleted
    QPixmap image0;                ///< the window's icon

public slots:
    /// Sets the wedge to edit (not null) and shows its angle with two decimals.
    virtual void setBond(KytStereoBond* b);

protected slots:
    virtual void languageChange();

private slots:
    virtual void onOK();
};
