#pragma once

#include <QDialog>
#include <QImage>

class KytAtom;
class QLabel;
class QLineEdit;
class QPushButton;

/// A dialog for editing the symbol and the colour of an atom.
class KytAtomProperties : public QDialog {
    Q_OBJECT

public:
    /// If `name` is null, the object name is "KytAtomProperties".
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
    KytAtom* atom = nullptr; ///< the atom being edited; not owned, null again after it was deleted

public slots:
    /// Sets the atom to edit (not null) and shows its symbol and colour.
    virtual void setAtom(KytAtom* a);

protected slots:
    virtual void languageChange();

private slots:
    virtual void onOK();
};
