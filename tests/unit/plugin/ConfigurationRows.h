#pragma once

#include <QMetaType>
#include <QString>
#include <QVariant>

struct ConfigurationRow
{
    QString key;
    int type; // of the default, by QMetaType
    QVariant value;
};

/// What every display gets when nothing is set. Display applications rely on each line.
inline const ConfigurationRow configurationRows[] = {
    {"View.Style:displayType", QMetaType::Int, 0},
    {"View.Style:backgroundColor", QMetaType::QString, "ece1e1"},
    {"View.Style:elementsMargin", QMetaType::Int, 10},
    {"View.Style:headerHeight", QMetaType::Int, 40},
    {"View.Style:receiptWidth", QMetaType::Int, 500},
    {"View.Style:receiptHeight", QMetaType::Int, 500},
    {"View.Style:receiptBackgroundColor", QMetaType::QString, "fcf8f8"},
    {"View.Style:receiptBorderColor", QMetaType::QString, "d0b5b5"},
    {"View.Style:additionalFontColor", QMetaType::QString, "988787"},
    {"View.Style:positionPaddingRightLeft", QMetaType::Int, 5},
    {"View.Style:positionMarginTopBottom", QMetaType::Int, 5},
    {"View.Style:positionHeight", QMetaType::Int, 50},
    {"View.Style:positionQuantityWidth", QMetaType::Int, 60},
    {"View.Style:positionSumWidth", QMetaType::Int, 130},
    {"View.Style:positionWrapLineCount", QMetaType::Int, 1},
    {"View.Style:showPositionDiscount", QMetaType::Bool, false},
    {"View.Style:positionDiscountHeight", QMetaType::Int, 15},
    {"View.Style:discountSumHeight", QMetaType::Int, 30},
    {"View.Style:checkSumHeight", QMetaType::Int, 40},
    {"View.Style:appLogoPath", QMetaType::UnknownType, QVariant()},
    {"View.Style:backgroundImagePath", QMetaType::UnknownType, QVariant()},
    {"View.Style:headerFontType", QMetaType::QString, "Sans Serif"},
    {"View.Style:headerFontColor", QMetaType::QString, "000000"},
    {"View.Style:headerFontBold", QMetaType::Bool, false},
    {"View.Style:headerFontSize", QMetaType::Int, 14},
    {"View.Style:positionFontColor", QMetaType::QString, "000000"},
    {"View.Style:positionFontType", QMetaType::QString, "Sans Serif"},
    {"View.Style:positionFontSize", QMetaType::Int, 14},
    {"View.Style:positionFontBold", QMetaType::Bool, false},
    {"View.Style:positionDiscountFontType", QMetaType::QString, "Sans Serif"},
    {"View.Style:positionDiscountFontColor", QMetaType::QString, "328f32"},
    {"View.Style:positionDiscountAdditionalFontColor", QMetaType::QString, "d61821"},
    {"View.Style:positionDiscountFontSize", QMetaType::Int, 13},
    {"View.Style:positionDiscountFontBold", QMetaType::Bool, false},
    {"View.Style:positionDiscountLabelMask", QMetaType::QString,
     "Скидка %(position.disc_perc[.2f])%"},
    {"View.Style:positionPriceWidth", QMetaType::Int, 0},
    {"View.Style:positionPriceFontType", QMetaType::QString, "Sans Serif"},
    {"View.Style:positionPriceFontColor", QMetaType::QString, "988787"},
    {"View.Style:positionPriceFontSize", QMetaType::Int, 14},
    {"View.Style:positionPriceFontBold", QMetaType::Bool, false},
    {"View.Style:footerFontType", QMetaType::QString, "Sans Serif"},
    {"View.Style:footerFontColor", QMetaType::QString, "000000"},
    {"View.Style:discountSumTitleFontSize", QMetaType::Int, 12},
    {"View.Style:discountSumFontSize", QMetaType::Int, 12},
    {"View.Style:discountSumFontBold", QMetaType::Bool, false},
    {"View.Style:checkSumTitleFontSize", QMetaType::Int, 20},
    {"View.Style:checkSumFontSize", QMetaType::Int, 24},
    {"View.Style:checkSumFontBold", QMetaType::Bool, false},
    {"View.Style:showImages", QMetaType::Bool, false},
    {"GUI:showGoodsQuantity", QMetaType::Bool, false},
    {"View.Logic:closedDocumentTimeout", QMetaType::Int, 10000},
};
