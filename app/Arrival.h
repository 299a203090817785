#pragma once

#include "doc/Clipping.h"

#include <QObject>
#include <QStringList>

#include <deque>
#include <memory>

class Converter;
class QMimeData;

/// Drawings on their way into the editor: from the clipboard or from dropped files. What is not a workspace goes
/// through kytconvert, one after the other, in the background. Ends with this object.
class Arrival : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;
    ~Arrival() override;

    /// Adds what `data` holds: a drawing of ours, a molecule in a chemical type, or text that is a workspace, a
    /// molfile, an SD file or SMILES. Returns why there is nothing to add; empty if there is.
    QString addClipboard(const QMimeData& data);
    /// Adds a file; one that cannot be read becomes a fault.
    void addFile(const QString& fileName);

    /// Begins; finished is emitted later.
    void start();

    /// Whether an SD file with properties was added, which a drawing does not keep.
    bool losesProperties() const { return hasProperties; }

signals:
    /// Emitted once. `faults` has the name and the reason of each that cannot be read.
    void finished(const QList<Clipping>& clippings, const QStringList& faults);

private:
    /// Something that kytconvert has to read.
    struct Source {
        QString name;
        QStringList arguments;
        QByteArray input;
    };

    QString addWorkspace(const Clipping& clipping);
    QString addText(const QByteArray& text);
    void addFault(const QString& name, const QString& reason);
    void convertNext();
    void take(const QByteArray& output, const QString& error);

    std::deque<Source> sources;
    QList<Clipping> clippings;
    QStringList faults;
    bool hasProperties = false;
    std::unique_ptr<Converter> converter;
};
