#pragma once

#include "PluginFixture.h"

#include <QJsonArray>

inline const QByteArray png = QByteArray::fromHex("89504e470d0a1a0a0000000d49484452");
inline const QByteArray otherPng = png + "newer";

inline const ImageId code(ImageId::GoodsCode, "100");
inline const ImageId otherCode(ImageId::GoodsCode, "101");
inline const ImageId barcode(ImageId::Barcode, "4600000000000");

inline QString uriOf(const QByteArray &content)
{
    return Image(code, content).toUri({});
}

inline QJsonObject requestFor(const ImageId &primary, const ImageId &fallback)
{
    return {{"type", "request"},
            {"name", "getImage"},
            {"data", QJsonObject{{"GoodsCode", primary.toJson()}, {"Barcode", fallback.toJson()}}}};
}

inline view::Message answer(const ImageId &id, const QString &uri)
{
    return {view::Message::Type::ImageData, {{"id", id.toJson().toVariantMap()}, {"uri", uri}}};
}

/// A plug-in with a store of pictures.
class ImagesFixture : public PluginFixture
{
protected:
    void know(const ImageId &id, const QByteArray &content = {}) const
    {
        host.images().store(Image(id, content));
    }
    void request(const ImageId &primary, const ImageId &fallback = barcode) const
    {
        connector->processGetImageRequest(requestFor(primary, fallback));
    }
    QList<view::Message> sent() const { return connector->takeSent(); }
};
