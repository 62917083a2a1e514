#include "KeloMenuBar/StatusPicture.h"

#include <gtest/gtest.h>

using namespace kelo;

namespace {

using Shape = StatusPicture::Shape;

StatusPicture picture(Shape shape, const QString &text, bool isUrgent = false)
{
    return {
        .shape = shape, .symbol = QStringLiteral("calendar.badge.clock"), .text = text, .isUrgent = isUrgent};
}

double shareOf(const QColor &color, const QImage &image)
{
    int count = 0;
    for (int pixel = 0; pixel < image.width() * image.height(); ++pixel)
        count += image.pixelColor(pixel % image.width(), pixel / image.width()) == color ? 1 : 0;
    return double(count) / (image.width() * image.height());
}

} // namespace

TEST(StatusPicture, isWhiteOnADarkPlateAndOrangeWhenItIsUrgent)
{
    const StatusPicture pictures[] = {
        picture(Shape::Square, {}),
        picture(Shape::Square, QStringLiteral("2m")),
        picture(Shape::Square, QStringLiteral("now"), true),
        picture(Shape::Wide, QStringLiteral("Design review · 2m")),
        picture(Shape::Wide, QStringLiteral("مراجعة التصميم · now"), true),
    };
    for (const StatusPicture &each : pictures) {
        for (int height : {22, 44}) {
            const QImage image = each.draw(height);
            EXPECT_EQ(image.height(), height);
            EXPECT_GT(shareOf(QColor(28, 28, 30), image), 0.3) << each.text.toStdString();
            EXPECT_EQ(shareOf(Qt::white, image) > 0.02, !each.isUrgent) << each.text.toStdString();
            EXPECT_EQ(shareOf(QColor(255, 159, 10), image) > 0.02, each.isUrgent) << each.text.toStdString();
        }
    }
}

TEST(StatusPicture, isSquareOrAsWideAsItsText)
{
    const auto draw = [](const QString &text, int height = 22) {
        return picture(Shape::Wide, text).draw(height);
    };
    EXPECT_EQ(picture(Shape::Square, QStringLiteral("1h 59m")).draw(22).size(), QSize(22, 22));
    EXPECT_EQ(draw({}, 44).size(), QSize(44, 44));
    const int width = draw(QStringLiteral("Design review · 2m")).width();
    EXPECT_GT(width, 80);
    EXPECT_NEAR(draw(QStringLiteral("Design review · 2m"), 44).width(), 2 * width, 0.2 * width);
    EXPECT_LT(draw(QString(5000, u'W')).width(), 320);
    // Same beginning, same length: only the end can make the difference.
    const QString title = QString(200, u'a');
    EXPECT_NE(draw(title + QStringLiteral(" · 1m")), draw(title + QStringLiteral(" · 2m")));
}
