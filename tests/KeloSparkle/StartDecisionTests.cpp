#include "KeloSparkle/InformationDictionary.h"

#include <QJsonArray>
#include <gtest/gtest.h>

namespace kelo {

TEST(StartDecisionTests, followsTheKeyOfTheInformationDictionary)
{
    const QJsonValue none[] = {QJsonValue::Undefined,
                               QJsonValue::Null,
                               QLatin1String(""),
                               42,
                               QJsonArray{QLatin1String("abc")},
                               QLatin1String("REPLACE_ME"),
                               QLatin1String("REPLACE")};
    for (const QJsonValue &key : none)
        EXPECT_FALSE(startsUpdater(key)) << key.toString().toStdString() << key.type();
    for (const char *key : {"replace_me", " REPLACE", "uTIbFFxQGGq6bEqCz0ekk9KXWu7Ygs2yWYF0ifPHmc0="})
        EXPECT_TRUE(startsUpdater(QLatin1String(key))) << key;
}

} // namespace kelo
