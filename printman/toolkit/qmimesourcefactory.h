#pragma once

#include <printman/printman_export.h>

#include <QImage>
#include <QList>
#include <QPixmap>
#include <QString>

#include <map>
#include <memory>

class QMimeData;

/// A source of images by name. The program has one default factory, which also asks those that are
/// added to it; a class of its own may find or make what is asked for.
///
/// For one thread, the main one. Names are compared letter for letter; null and empty names have no
/// image.
class PRINTMAN_EXPORT QMimeSourceFactory {
public:
    QMimeSourceFactory();

    /// Removes it from the default factory.
    virtual ~QMimeSourceFactory();

    QMimeSourceFactory(const QMimeSourceFactory&) = delete;
    QMimeSourceFactory& operator=(const QMimeSourceFactory&) = delete;

    /// The factory of the program. Nobody deletes it: it goes with the library.
    ///
    /// @return null once it has gone, which only a destructor of a static object can meet
    static QMimeSourceFactory* defaultFactory();

    /// Has the default factory ask @p factory too: for what it has not itself, and behind those
    /// that were added before. The caller keeps the factory and may destroy it at any time. Nothing
    /// happens for null, for the default factory itself and for one that was added already.
    static void addFactory(QMimeSourceFactory* factory);

    /// The default factory no longer asks @p factory. Nothing happens for one that was not added.
    static void removeFactory(QMimeSourceFactory* factory);

    /// What stands under @p name: of the default factory also what an added one has.
    ///
    /// @return null when there is nothing; it belongs to the factory that has it, until that
    /// factory
    ///         goes or is given another image of that name
    virtual const QMimeData* data(const QString& name);

    /// The image of data(), to be shown. A pixmap needs a QGuiApplication; data() does not.
    ///
    /// @return a null pixmap when there is none
    QPixmap pixmap(const QString& name);

    /// Keeps @p image under @p name in place of an earlier one; a null image removes it.
    void setImage(const QString& name, const QImage& image);

private:
    std::map<QString, std::unique_ptr<QMimeData>> images_;
    QList<QMimeSourceFactory*> others_; ///< of the default factory: those that were added
};
