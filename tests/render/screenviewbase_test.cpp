#include "tests/support/language.h"

#include <printman/render/screen.h>

#include <QEvent>
#include <gtest/gtest.h>

TEST(ScreenForm, takesTheLanguageThatTheProgramChangesTo) {
    ScreenViewBase form;
    const QString caption = form.windowTitle();
    ASSERT_FALSE(caption.isEmpty());
    {
        const testsupport::LongLanguage language;
        QEvent change(QEvent::LanguageChange);
        QCoreApplication::sendEvent(&form, &change);
        EXPECT_EQ(form.windowTitle(), caption.repeated(3));
    }
    form.languageChange();
    EXPECT_EQ(form.windowTitle(), caption);
}
