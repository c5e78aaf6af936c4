#include "screen/ScreenCaptureLogic.h"

#include "screen/ScreenshotEncoding.h"
#include "support/Awaited.h"
#include "support/TableRow.h"

#include <QImage>

namespace pobblewig {

class ScreenCaptureLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aPictureIsScaledToWhatAModelCanSee()
    {
        // Tall ones are cut to whole pixels, and nothing is less than two wide.
        const std::pair<QSize, QSize> sizes[] { { { 3000, 1500 }, { 1568, 784 } },
            { { 1001, 2000 }, { 784, 1568 } }, { { 1568, 900 }, { 1568, 900 } },
            { { 1, 1 }, { 2, 2 } }, { { 20000, 1 }, { 1568, 2 } } };
        for (const auto& [taken, sent] : sizes) {
            QImage image(taken, QImage::Format_ARGB32_Premultiplied);
            image.fill(qRgba(0, 100, 0, 128));
            const auto jpeg = awaited(ScreenshotEncoding::screenshotData(image));
            QVERIFY(jpeg && jpeg->startsWith("\xFF\xD8\xFF"));
            const auto decoded = QImage::fromData(*jpeg);
            QCOMPARE(decoded.size(), sent);
            QVERIFY(qAbs(qGreen(decoded.pixel(1, 1)) - 100) < 8);
        }
    }

    void thePixelsAreLimitedAndTheQualityCounts()
    {
        QImage image(400, 2, QImage::Format_RGB32);
        for (int x = 0; x < 800; ++x)
            image.setPixel(x / 2, x % 2, QRgb(x * 7919 * 131));
        const auto size = [&](int most) {
            return QImage::fromData(*ScreenshotEncoding::jpegData(image, most, 0.7)).size();
        };
        QCOMPARE(size(100), QSize(100, 2));
        QCOMPARE(size(400), image.size());
        QVERIFY(ScreenshotEncoding::jpegData(image, 400, 0.7)->size()
            < ScreenshotEncoding::jpegData(image, 400, 1)->size());
        QVERIFY(!ScreenshotEncoding::jpegData({}, 400, 0.7));
        QVERIFY(!awaited(ScreenshotEncoding::screenshotData({})));
    }

    void theLabelNamesTheWindow()
    {
        const auto label = ScreenCaptureLogic::windowLabel;
        const auto browser = u"Safari"_s;
        QCOMPARE(label({}, browser), browser);
        QCOMPARE(label(u"50 %2 off"_s, browser), u"\"50 %2 off\" of Safari");
        QCOMPARE(label(u"a\nb\u202ec"_s, browser), u"\"a bc\" of Safari");
    }

    void excludedProgramsAreBlankedWithTheirMenus()
    {
        const auto vault = u"org.example.Vault"_s;
        const std::vector<ScreenWindow> windows {
            { .connection = 1, .processID = 10, .bundleIdentifier = vault },
            { .connection = 1 },
            { .connection = 2, .processID = 10 },
            { .connection = 3, .processID = 11 },
            { .connection = 4 },
            { .isOurs = true, .connection = 5, .bundleIdentifier = vault },
            { .connection = 6, .bundleIdentifier = vault },
        };
        using enum Visibility;
        const std::vector expected { blanked, blanked, blanked, shown, shown, leftOut, blanked };
        QVERIFY(ScreenCaptureLogic::visibilities(windows, { { vault }, nullptr }) == expected);
    }

    void onlyWhatCanBeSeenIsPainted_data()
    {
        columns<bool, Visibility, std::vector<std::size_t>, QRect>(
            "isOpaque", "visibility", "layers", "desktop");
        using Layers = std::vector<std::size_t>;
        const QRect right(50, 0, 50, 100);
        row("a window hides what is below", true, Visibility::shown, Layers { 1 }, right);
        row("one shows through", false, Visibility::shown, Layers { 0, 1 }, right);
        row("beneath ours", true, Visibility::leftOut, Layers { 0 }, right);
        row("under a blanked one", false, Visibility::blanked, Layers { 1 }, QRect());
    }
    void onlyWhatCanBeSeenIsPainted()
    {
        QFETCH(bool, isOpaque);
        QFETCH(Visibility, visibility);
        using Layers = std::vector<std::size_t>;
        const std::vector<ScreenWindow> windows {
            { .frame = { 10, 10, 30, 30 } },
            { .frame = { -5, -5, 55, 200 }, .isOpaque = isOpaque },
            { .frame = { 100, 0, 50, 50 } },
        };
        const std::vector visibilities { Visibility::shown, visibility, Visibility::shown };
        const auto composition =
            ScreenCaptureLogic::composition(windows, visibilities, { 0, 0, 100, 100 });
        QTEST(Layers(composition.layers), "layers");
        QVERIFY(!composition.desktop.contains(QPoint(5, 5)) || visibility == Visibility::shown);
        QFETCH(QRect, desktop);
        QCOMPARE(composition.desktop & QRect(50, 0, 50, 100), QRegion(desktop));
    }

    void whatIsAboveOrOutsideCovers()
    {
        const std::vector<ScreenWindow> windows { { .frame = { 0, 0, 100, 100 } },
            { .frame = { 50, 50, 100, 100 } }, { .frame = { 120, 120, 60, 60 } } };
        const QRect screen(0, 0, 160, 160);
        const auto covered = [&](std::size_t index) {
            return ScreenCaptureLogic::coveredPart(windows, index, screen);
        };
        QCOMPARE(covered(0), QRegion(50, 50, 50, 50));
        QCOMPARE(covered(1), QRegion(120, 120, 30, 30));
        QCOMPARE(covered(2), QRegion(160, 120, 20, 60) + QRegion(120, 160, 60, 20));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ScreenCaptureLogicTest)
#include "ScreenCaptureLogicTest.moc"
