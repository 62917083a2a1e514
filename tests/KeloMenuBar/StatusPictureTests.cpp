#include "KeloMenuBar/StatusPicture.h"

#include "KeloTheme/SystemColors.h"

#include <QPainter>
#include <gtest/gtest.h>

using namespace kelo;

namespace {

using Shape = StatusPicture::Shape;

StatusPicture picture(Shape shape, const QString &text, bool isUrgent = false)
{
    return {
        .shape = shape, .symbol = QStringLiteral("calendar.badge.clock"), .text = text, .isUrgent = isUrgent};
}

struct Shares
{
    /// Of the pixels that have the contrast to their neighbour that WCAG asks of text.
    double edges = 0;
    double orange = 0;
};

Shares sharesOf(const QImage &image)
{
    Shares shares;
    const double one = 1.0 / (image.width() * image.height());
    for (int pixel = 1; pixel < image.width() * image.height(); ++pixel) {
        const QPoint place(pixel % image.width(), pixel / image.width());
        const QColor color = image.pixelColor(place);
        const bool isEdge = place.x() > 0 && contrast(image.pixelColor(place - QPoint(1, 0)), color) >= 4.5;
        shares.edges += isEdge ? one : 0;
        shares.orange += color.red() > 200 && color.blue() < 100 ? one : 0;
    }
    return shares;
}

} // namespace

TEST(StatusPicture, canBeReadOnEveryPanelAndIsOrangeWhenItIsUrgent)
{
    const StatusPicture pictures[] = {
        picture(Shape::Square, {}),
        picture(Shape::Square, QStringLiteral("2m")),
        picture(Shape::Square, QStringLiteral("now"), true),
        picture(Shape::Wide, QStringLiteral("Design review · 2m")),
        picture(Shape::Wide, QStringLiteral("デザインレビュー · 1h 5m")),
        picture(Shape::Wide, QStringLiteral("مراجعة التصميم · now"), true),
    };
    for (const StatusPicture &each : pictures) {
        for (int height : {22, 44}) {
            const QImage image = each.draw(height);
            EXPECT_EQ(image.height(), height);
            EXPECT_EQ(sharesOf(image).orange > 0.02, each.isUrgent) << each.text.toStdString();
            for (const Qt::GlobalColor panel : {Qt::white, Qt::gray, Qt::black}) {
                // The inside of the picture, so that its own edge doesn't count.
                QImage inside(image.size() - QSize(4, 4), QImage::Format_RGB32);
                inside.fill(panel);
                QPainter(&inside).drawImage(-2, -2, image);
                EXPECT_GT(sharesOf(inside).edges, 0.02) << each.text.toStdString() << " on " << panel;
            }
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
