#include "Driver.h"

#include <QGenericPlugin>

/// Loaded into any Qt program by QT_PLUGIN_PATH and QT_QPA_GENERIC_PLUGINS=quillbaydriver.
class DriverPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "driver.json")

public:
    QObject* create(const QString&, const QString&) override { return new quillbay::Driver; }
};

#include "DriverPlugin.moc"
