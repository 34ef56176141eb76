#pragma once

#include <printman/printman_export.h>

#include <QImage>
#include <QList>
#include <QPixmap>
#include <QString>

#include <map>
#include <memory>

class QMimeData;

/// A source of images by name. The program has one default factory, which also asks the factories
/// that are added to it; a derived class may find or create images on demand.
///
/// To be used only in the main thread. Names must match exactly; null and empty names have no
/// image.
class PRINTMAN_EXPORT QMimeSourceFactory {
public:
    QMimeSourceFactory();

    /// Removes this factory from the default factory.
    virtual ~QMimeSourceFactory();

    QMimeSourceFactory(const QMimeSourceFactory&) = delete;
    QMimeSourceFactory& operator=(const QMimeSourceFactory&) = delete;

    /// The program's default factory. It must not be deleted: it is destroyed with the library.
    ///
    /// @return null once it is destroyed, which only destructors of static objects can see
    static QMimeSourceFactory* defaultFactory();

    /// Makes the default factory ask @p factory for images that it does not have itself, after
    /// those that were added before. The caller keeps ownership and may destroy the factory at any
    /// time. Does nothing for null, for the default factory itself, and for one that was added
    /// already.
    static void addFactory(QMimeSourceFactory* factory);

    /// Makes the default factory no longer ask @p factory. Does nothing for one that was not added.
    static void removeFactory(QMimeSourceFactory* factory);

    /// The data with that name; the default factory also looks in the added ones.
    ///
    /// @return owned by the factory that has it, and valid until that factory is destroyed or given
    ///         another image of that name; null if there is none
    virtual const QMimeData* data(const QString& name);

    /// The image of data() as a pixmap, which needs a QGuiApplication; data() does not.
    ///
    /// @return a null pixmap if there is none
    QPixmap pixmap(const QString& name);

    /// Sets the image with that name, replacing an earlier one; a null image removes it.
    void setImage(const QString& name, const QImage& image);

private:
    std::map<QString, std::unique_ptr<QMimeData>> images_;
    QList<QMimeSourceFactory*> others_; ///< in the default factory: those that were added
};
