#include <printman/dialogs/images.h>

#include <QGuiApplication>

#include <cstdio>
#include <memory>
#include <string_view>

namespace {

/// Asks for an image before main() and after it, and so may what a host keeps.
struct EarlyAndLate {
    EarlyAndLate() {
        QMimeSourceFactory::addFactory(&own);
        ask();
    }
    ~EarlyAndLate() { ask(); }
    EarlyAndLate(const EarlyAndLate&) = delete;
    EarlyAndLate& operator=(const EarlyAndLate&) = delete;

    static void ask() {
        QMimeSourceFactory* const factory = QMimeSourceFactory::defaultFactory();
        std::puts(factory && factory->data(QStringLiteral("korvologo.png")) ? "logo" : "no logo");
    }

    QMimeSourceFactory own;
};
EarlyAndLate early_and_late;

} // namespace

/// usage: linkedhost [gui|taken-away]
int main(int argc, char** argv) {
    const std::string_view how(argc > 1 ? argv[1] : "");
    const auto application = how == "gui" ? std::make_unique<QGuiApplication>(argc, argv) : nullptr;
    if (how == "taken-away")
        qCleanupImages_printman();
    if (application) {
        const QPixmap logo =
            QMimeSourceFactory::defaultFactory()->pixmap(QStringLiteral("korvologo.png"));
        std::printf("pixmap %d x %d\n", logo.width(), logo.height());
    }
    return 0;
}
