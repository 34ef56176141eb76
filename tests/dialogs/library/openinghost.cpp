#include <printman/toolkit/qmimesourcefactory.h>

#include <QGuiApplication>

#include <cstdio>
#include <dlfcn.h>
#include <memory>
#include <string_view>

namespace {

/// Opens the library, asks it for an image, and closes it unless @p keep.
bool visit(const char* library, bool keep) {
    void* const handle = ::dlopen(library, RTLD_NOW);
    if (!handle) {
        std::fprintf(stderr, "%s\n", ::dlerror());
        return false;
    }
    using Find = QMimeSourceFactory* (*)();
    const auto find =
        reinterpret_cast<Find>(::dlsym(handle, "_ZN18QMimeSourceFactory14defaultFactoryEv"));
    const bool found = find && find()->data(QStringLiteral("korvoicon.png")) != nullptr;
    std::puts(found ? "icon" : "no icon");
    return found && (keep || ::dlclose(handle) == 0);
}

} // namespace

/// usage: openinghost LIBRARY [gui]
int main(int argc, char** argv) {
    if (argc < 2)
        return 2;
    const char* const library = argv[1];
    const bool gui = argc > 2 && std::string_view(argv[2]) == "gui";
    const auto application = gui ? std::make_unique<QGuiApplication>(argc, argv) : nullptr;
    return visit(library, false) && visit(library, false) && visit(library, true) ? 0 : 1;
}
