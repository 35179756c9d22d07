// The display's configuration: its layout, colours, fonts and behaviour, from the settings.

#include <plugin/ViewConnector.h>

#include <Config.h>
#include <Singleton.h>

namespace {

constexpr int defaultAdvertisingWidth = 560;
constexpr int defaultAdvertisingHeight = 256;

const QString &qmlStyleGroup()
{
    static const QString group = QStringLiteral("View.QmlStyle");
    return group;
}

QString qmlStyleKey(const QString &name)
{
    return qmlStyleGroup() + u':' + name;
}

/// What every display gets, with the value that stands for a setting that is absent. Display
/// applications rely on these keys, values and types.
QVariantMap defaultConfiguration()
{
    return {
        {QStringLiteral("View.Style:displayType"), 0},
        {QStringLiteral("View.Style:backgroundColor"), QStringLiteral("ece1e1")},
        {QStringLiteral("View.Style:elementsMargin"), 10},
        {QStringLiteral("View.Style:headerHeight"), 40},
        {QStringLiteral("View.Style:receiptWidth"), 500},
        {QStringLiteral("View.Style:receiptHeight"), 500},
        {QStringLiteral("View.Style:receiptBackgroundColor"), QStringLiteral("fcf8f8")},
        {QStringLiteral("View.Style:receiptBorderColor"), QStringLiteral("d0b5b5")},
        {QStringLiteral("View.Style:additionalFontColor"), QStringLiteral("988787")},
        {QStringLiteral("View.Style:positionPaddingRightLeft"), 5},
        {QStringLiteral("View.Style:positionMarginTopBottom"), 5},
        {QStringLiteral("View.Style:positionHeight"), 50},
        {QStringLiteral("View.Style:positionQuantityWidth"), 60},
        {QStringLiteral("View.Style:positionSumWidth"), 130},
        {QStringLiteral("View.Style:positionWrapLineCount"), 1},
        {QStringLiteral("View.Style:showPositionDiscount"), false},
        {QStringLiteral("View.Style:positionDiscountHeight"), 15},
        {QStringLiteral("View.Style:discountSumHeight"), 30},
        {QStringLiteral("View.Style:checkSumHeight"), 40},
        {QStringLiteral("View.Style:appLogoPath"), QVariant()},
        {QStringLiteral("View.Style:backgroundImagePath"), QVariant()},
        {QStringLiteral("View.Style:headerFontType"), QStringLiteral("Sans Serif")},
        {QStringLiteral("View.Style:headerFontColor"), QStringLiteral("000000")},
        {QStringLiteral("View.Style:headerFontBold"), false},
        {QStringLiteral("View.Style:headerFontSize"), 14},
        {QStringLiteral("View.Style:positionFontColor"), QStringLiteral("000000")},
        {QStringLiteral("View.Style:positionFontType"), QStringLiteral("Sans Serif")},
        {QStringLiteral("View.Style:positionFontSize"), 14},
        {QStringLiteral("View.Style:positionFontBold"), false},
        {QStringLiteral("View.Style:positionDiscountFontType"), QStringLiteral("Sans Serif")},
        {QStringLiteral("View.Style:positionDiscountFontColor"), QStringLiteral("328f32")},
        {QStringLiteral("View.Style:positionDiscountAdditionalFontColor"),
         QStringLiteral("d61821")},
        {QStringLiteral("View.Style:positionDiscountFontSize"), 13},
        {QStringLiteral("View.Style:positionDiscountFontBold"), false},
        {QStringLiteral("View.Style:positionDiscountLabelMask"),
         QStringLiteral("Скидка %(position.disc_perc[.2f])%")},
        {QStringLiteral("View.Style:positionPriceWidth"), 0},
        {QStringLiteral("View.Style:positionPriceFontType"), QStringLiteral("Sans Serif")},
        {QStringLiteral("View.Style:positionPriceFontColor"), QStringLiteral("988787")},
        {QStringLiteral("View.Style:positionPriceFontSize"), 14},
        {QStringLiteral("View.Style:positionPriceFontBold"), false},
        {QStringLiteral("View.Style:footerFontType"), QStringLiteral("Sans Serif")},
        {QStringLiteral("View.Style:footerFontColor"), QStringLiteral("000000")},
        {QStringLiteral("View.Style:discountSumTitleFontSize"), 12},
        {QStringLiteral("View.Style:discountSumFontSize"), 12},
        {QStringLiteral("View.Style:discountSumFontBold"), false},
        {QStringLiteral("View.Style:checkSumTitleFontSize"), 20},
        {QStringLiteral("View.Style:checkSumFontSize"), 24},
        {QStringLiteral("View.Style:checkSumFontBold"), false},
        {QStringLiteral("View.Style:showImages"), false},
        {QStringLiteral("GUI:showGoodsQuantity"), false},
        {QStringLiteral("View.Logic:closedDocumentTimeout"), 10000},
    };
}

/// What a display of the touch interface gets besides.
void addTouchConfiguration(const Config &config, QVariantMap &payload)
{
    const auto themeKey = QStringLiteral("theme:name");
    payload[themeKey] = config.value(themeKey, QStringLiteral("touch"));

    const auto names = config.groupKeys(qmlStyleGroup(), true);
    for (const auto &name : names) {
        const QString key = qmlStyleKey(name);
        payload[key] = config.value(key, QVariant());
    }

    // After the group, so that these are integers however they are stored.
    const auto setInteger = [&](const QString &name, int defaultValue) {
        const QString key = qmlStyleKey(name);
        payload[key] = config.intValue(key, defaultValue);
    };
    setInteger(QStringLiteral("displayType"),
               payload.value(QStringLiteral("View.Style:displayType")).toInt());
    setInteger(QStringLiteral("advertisingWidth"), defaultAdvertisingWidth);
    setInteger(QStringLiteral("advertisingHeight"), defaultAdvertisingHeight);
}

} // namespace

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): the contract with the host
QVariantMap ViewConnector::readConfigurationPayload() const
{
    const Config &config = Singleton<Config>::instance();
    QVariantMap payload = defaultConfiguration();
    for (auto entry = payload.begin(); entry != payload.end(); ++entry)
        *entry = config.value(entry.key(), *entry);

    const bool touchInterface = config.isTouchInterface();
    payload[QStringLiteral("View.Interface:touchng")] = touchInterface;
    if (touchInterface)
        addTouchConfiguration(config, payload);
    return payload;
}
