#include <printman/toolkit/qmimesourcefactory.h>

#include <QGlobalStatic>
#include <QMimeData>

namespace {

// It may be used before main() and again by destructors after main(): by then it is null.
Q_GLOBAL_STATIC(QMimeSourceFactory, the_default_factory)

} // namespace

QMimeSourceFactory::QMimeSourceFactory() = default;

QMimeSourceFactory::~QMimeSourceFactory() {
    removeFactory(this);
}

QMimeSourceFactory* QMimeSourceFactory::defaultFactory() {
    return the_default_factory();
}

void QMimeSourceFactory::addFactory(QMimeSourceFactory* factory) {
    QMimeSourceFactory* const asker = defaultFactory();
    if (!factory || !asker || factory == asker || asker->others_.contains(factory))
        return;
    asker->others_.append(factory);
}

void QMimeSourceFactory::removeFactory(QMimeSourceFactory* factory) {
    if (the_default_factory.exists())
        the_default_factory->others_.removeAll(factory);
}

const QMimeData* QMimeSourceFactory::data(const QString& name) {
    const auto found = images_.find(name);
    if (found != images_.end())
        return found->second.get();
    // A factory that is asked may add and remove others.
    const QList<QMimeSourceFactory*> asked = others_;
    for (QMimeSourceFactory* const other : asked) {
        const QMimeData* const answer = others_.contains(other) ? other->data(name) : nullptr;
        if (answer)
            return answer;
    }
    return nullptr;
}

QPixmap QMimeSourceFactory::pixmap(const QString& name) {
    const QMimeData* const found = data(name);
    return found ? QPixmap::fromImage(qvariant_cast<QImage>(found->imageData())) : QPixmap();
}

void QMimeSourceFactory::setImage(const QString& name, const QImage& image) {
    if (name.isEmpty())
        return;
    if (image.isNull()) {
        images_.erase(name);
        return;
    }
    auto held = std::make_unique<QMimeData>();
    held->setImageData(image);
    images_.insert_or_assign(name, std::move(held));
}
