#pragma once

#include "doc/Clipping.h"

#include <QMimeData>

#include <map>
#include <memory>

class Converter;

inline constexpr const char* workspaceType = "application/x-kytstudio-workspace";
inline constexpr const char* locksType = "application/x-kytstudio-locks"; ///< Clipping::locks

/// A copied drawing on the clipboard: as workspace text, and, if kytconvert is installed, as pictures, molfile and
/// SMILES.
///
/// kytconvert makes these one after the other from the beginning. A request for one that is not ready waits for at most
/// two seconds and is then refused.
class DrawingMimeData : public QMimeData {
    Q_OBJECT

public:
    explicit DrawingMimeData(const Clipping& clipping);
    ~DrawingMimeData() override;

    /// Ends kytconvert; from now on, only what is ready is offered.
    void offerReadyOnly();

    QStringList formats() const override;

protected:
    QVariant retrieveData(const QString& type, QMetaType preferred) const override;

private:
    void convertNext();
    void take(const QByteArray& output, const QString& error);
    void waitFor(const QString& type);

    std::map<QString, QByteArray> ready;
    QStringList pending; // types that are made, in this order; the first one now
    QByteArray workspace;
    std::unique_ptr<Converter> converter;
};
