#include "tools/images/artwork.h"

#include <QSaveFile>
#include <QTextStream>
#include <QtEndian>

#include <cstdio>

namespace {

/// The pixels as the library embeds them: 32-bit words, little-endian, row by row, compressed.
QByteArray compressed(const QImage& image) {
    QByteArray pixels;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const quint32 word = qToLittleEndian(quint32{image.pixel(x, y)});
            pixels.append(reinterpret_cast<const char*>(&word), sizeof word);
        }
    }
    return qCompress(pixels, 9);
}

void write_array(QTextStream& out, const char* name, const QByteArray& bytes) {
    constexpr qsizetype in_line = 24;
    out << "const unsigned char " << name << "[] = {\n" << Qt::hex << Qt::noshowbase;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        out << (i % in_line == 0 ? "    " : "") << "0x" << qSetFieldWidth(2) << qSetPadChar(u'0')
            << byte << qSetFieldWidth(0);
        out << (i % in_line == in_line - 1 || i == bytes.size() - 1 ? ",\n" : ",");
    }
    out << "};\nconst unsigned " << name << "_size = " << Qt::dec << bytes.size() << ";\n";
}

} // namespace

/// usage: draw_images IMAGEDATA.CPP [PNG_DIRECTORY]
int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("usage: draw_images IMAGEDATA.CPP [PNG_DIRECTORY]\n", stderr);
        return 2;
    }
    const QImage logo = draw_logo();
    const QImage icon = draw_icon();
    QSaveFile file(QString::fromLocal8Bit(argv[1]));
    if (!file.open(QIODevice::WriteOnly)) {
        std::perror(argv[1]);
        return 1;
    }
    QTextStream out(&file);
    out << "// Made by tools/images; draw the pictures there, and run it again.\n"
           "// clang-format off\n\n"
           "#include <printman/dialogs/imagedata.h>\n\n"
           "namespace printman {\n\n";
    write_array(out, "logo_pixels", compressed(logo));
    out << '\n';
    write_array(out, "icon_pixels", compressed(icon));
    out << "\n} // namespace printman\n";
    out.flush();
    if (!file.commit()) {
        std::perror(argv[1]);
        return 1;
    }
    if (argc > 2) {
        const QString directory = QString::fromLocal8Bit(argv[2]);
        if (!logo.save(directory + QStringLiteral("/korvologo.png")) ||
            !icon.save(directory + QStringLiteral("/korvoicon.png"))) {
            std::fputs("the pictures cannot be written\n", stderr);
            return 1;
        }
    }
    return 0;
}
