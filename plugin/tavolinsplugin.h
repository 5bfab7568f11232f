#pragma once

#include "values/tavolinsexport.h"

#include <QtQml/QQmlExtensionPlugin>

/// Registers the module's types: `Theme` (attached, can't be instantiated) and `ThemeManager`
/// (singleton), both at version 1.0.
class TAVOLINS_EXPORT TavolinsPlugin : public QQmlExtensionPlugin
{
    Q_OBJECT

public:
    explicit TavolinsPlugin(QObject *parent = nullptr);

    /// Registers both types under the module identifier \a uri, which is the engine's choice.
    void registerTypes(const char *uri) override;
};
