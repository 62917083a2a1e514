#pragma once

#include "support/SharedViews.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWindow>
#include <gtest/gtest.h>
#include <memory>

namespace mivora {

/// A window that is never shown keeps the shared views' engine, and the code that it has compiled, from one
/// test to the next.
class KeptViews final : public testing::Environment
{
    void SetUp() override
    {
        kelo::ViewSpec card;
        card.module = QStringLiteral("KeloThemeViews");
        card.component = QStringLiteral("KeloCard");
        window.reset(sharedViews().createWindow(card));
    }

    void TearDown() override
    {
        window.reset();
        // Other windows may be on their way out: they don't outlive the application.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        sharedViews().releaseUnused();
    }

    std::unique_ptr<QWindow> window;
};

/// Of every program that includes this.
inline const auto *const keptViews = testing::AddGlobalTestEnvironment(new KeptViews);

} // namespace mivora
