#include "tests/support/tools.h"

#include <printman/toolkit/qmimesourcefactory.h>

#include <QMimeData>
#include <gtest/gtest.h>

#include <functional>

using testsupport::text;

namespace {

QImage picture(QRgb color, int width = 3) {
    QImage image(width, 2, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

QColor color_of(QMimeSourceFactory& factory, const char* name) {
    const QPixmap pixmap = factory.pixmap(text(name));
    return pixmap.isNull() ? QColor() : pixmap.toImage().pixelColor(0, 0);
}

/// Notes what it is asked for, and does something then.
class Asked : public QMimeSourceFactory {
public:
    const QMimeData* data(const QString& name) override {
        names << name;
        if (on_asked)
            on_asked();
        return QMimeSourceFactory::data(name);
    }

    QStringList names;
    std::function<void()> on_asked;
};

QMimeSourceFactory& the_default() {
    return *QMimeSourceFactory::defaultFactory();
}

} // namespace

TEST(MimeSourceFactory, keepsImagesByName) {
    QMimeSourceFactory factory;
    factory.setImage(text("red"), picture(qRgb(255, 0, 0)));
    factory.setImage(text("Red"), picture(qRgb(200, 0, 0)));
    const QMimeData* const red = factory.data(text("red"));
    ASSERT_NE(red, nullptr);
    EXPECT_EQ(qvariant_cast<QImage>(red->imageData()), picture(qRgb(255, 0, 0)));
    EXPECT_EQ(factory.data(text("red")), red);
    EXPECT_EQ(factory.pixmap(text("red")).size(), QSize(3, 2));
    EXPECT_EQ(color_of(factory, "Red"), QColor(200, 0, 0));
}

TEST(MimeSourceFactory, anUnknownNameHasNothing) {
    QMimeSourceFactory factory;
    factory.setImage(text("red"), picture(qRgb(255, 0, 0)));
    for (const QString& name : {text("blue"), text("red "), text(""), QString()}) {
        EXPECT_EQ(factory.data(name), nullptr);
        EXPECT_TRUE(factory.pixmap(name).isNull());
    }
}

TEST(MimeSourceFactory, namesWithoutLettersHaveNoImage) {
    QMimeSourceFactory factory;
    factory.setImage(QString(), picture(qRgb(255, 0, 0)));
    factory.setImage(text(""), picture(qRgb(255, 0, 0)));
    EXPECT_EQ(factory.data(QString()), nullptr);
    EXPECT_EQ(factory.data(text("")), nullptr);
}

TEST(MimeSourceFactory, anImageReplacesTheEarlierOneAndANullImageRemovesIt) {
    QMimeSourceFactory factory;
    factory.setImage(text("mark"), picture(qRgb(255, 0, 0)));
    factory.setImage(text("mark"), picture(qRgb(0, 255, 0)));
    EXPECT_EQ(color_of(factory, "mark"), QColor(0, 255, 0));
    factory.setImage(text("mark"), QImage());
    EXPECT_EQ(factory.data(text("mark")), nullptr);
    EXPECT_TRUE(factory.pixmap(text("mark")).isNull());
    factory.setImage(text("mark"), QImage());
    EXPECT_EQ(factory.data(text("mark")), nullptr);
}

TEST(MimeSourceFactory, theDefaultOneAsksThoseThatWereAddedInTheirOrder) {
    QMimeSourceFactory first;
    QMimeSourceFactory second;
    first.setImage(text("both"), picture(qRgb(1, 1, 1)));
    second.setImage(text("both"), picture(qRgb(2, 2, 2)));
    second.setImage(text("second"), picture(qRgb(3, 3, 3)));
    EXPECT_EQ(the_default().data(text("both")), nullptr);
    QMimeSourceFactory::addFactory(&first);
    QMimeSourceFactory::addFactory(&second);
    EXPECT_EQ(color_of(the_default(), "both"), QColor(1, 1, 1));
    EXPECT_EQ(color_of(the_default(), "second"), QColor(3, 3, 3));
    QMimeSourceFactory::removeFactory(&first);
    EXPECT_EQ(color_of(the_default(), "both"), QColor(2, 2, 2));
    QMimeSourceFactory::removeFactory(&second);
    EXPECT_EQ(the_default().data(text("both")), nullptr);
    EXPECT_NE(first.data(text("both")), nullptr);
}

TEST(MimeSourceFactory, whatTheDefaultOneHasItselfComesFirst) {
    Asked added;
    QMimeSourceFactory::addFactory(&added);
    added.setImage(text("mine"), picture(qRgb(1, 1, 1)));
    the_default().setImage(text("mine"), picture(qRgb(9, 9, 9)));
    EXPECT_EQ(color_of(the_default(), "mine"), QColor(9, 9, 9));
    EXPECT_TRUE(added.names.isEmpty());
    the_default().setImage(text("mine"), QImage());
    EXPECT_EQ(color_of(the_default(), "mine"), QColor(1, 1, 1));
}

TEST(MimeSourceFactory, onlyTheDefaultOneAsksOthers) {
    Asked added;
    QMimeSourceFactory::addFactory(&added);
    QMimeSourceFactory other;
    EXPECT_EQ(other.data(text("any")), nullptr);
    EXPECT_TRUE(added.names.isEmpty());
}

TEST(MimeSourceFactory, isAskedOnceHoweverOftenItWasAdded) {
    Asked added;
    QMimeSourceFactory::addFactory(&added);
    QMimeSourceFactory::addFactory(&added);
    EXPECT_EQ(the_default().data(text("any")), nullptr);
    EXPECT_EQ(added.names, QStringList(text("any")));
    QMimeSourceFactory::removeFactory(&added);
    QMimeSourceFactory::removeFactory(&added);
    EXPECT_EQ(the_default().data(text("any")), nullptr);
    EXPECT_EQ(added.names.size(), 1);
}

TEST(MimeSourceFactory, addsNeitherNothingNorItself) {
    QMimeSourceFactory::addFactory(nullptr);
    QMimeSourceFactory::addFactory(QMimeSourceFactory::defaultFactory());
    QMimeSourceFactory::removeFactory(nullptr);
    EXPECT_EQ(the_default().data(text("any")), nullptr);
}

TEST(MimeSourceFactory, oneThatGoesIsNoLongerAsked) {
    {
        QMimeSourceFactory passing;
        passing.setImage(text("passing"), picture(qRgb(1, 1, 1)));
        QMimeSourceFactory::addFactory(&passing);
        EXPECT_NE(the_default().data(text("passing")), nullptr);
    }
    EXPECT_EQ(the_default().data(text("passing")), nullptr);
}

TEST(MimeSourceFactory, oneThatIsAskedMayRemoveAndDestroyOthers) {
    Asked first;
    auto second = std::make_unique<Asked>();
    QMimeSourceFactory third;
    third.setImage(text("third"), picture(qRgb(3, 3, 3)));
    first.on_asked = [&] {
        second.reset();
        QMimeSourceFactory::removeFactory(&first);
    };
    for (QMimeSourceFactory* factory : {static_cast<QMimeSourceFactory*>(&first),
                                        static_cast<QMimeSourceFactory*>(second.get()), &third})
        QMimeSourceFactory::addFactory(factory);
    EXPECT_EQ(color_of(the_default(), "third"), QColor(3, 3, 3));
    EXPECT_EQ(second, nullptr);
}
