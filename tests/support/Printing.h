#pragma once

#include "platform/Color.h"
#include "platform/Error.h"
#include "platform/Font.h"
#include "platform/Value.h"

#include <QRectF>
#include <QString>
#include <QVariant>

#include <ostream>

// How a failed comparison shows the values that tests compare. Each stands in the namespace of its type,
// where GoogleTest finds it.

inline void PrintTo(const QString &text, std::ostream *stream)
{
    *stream << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QByteArray &text, std::ostream *stream)
{
    *stream << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QVariant &value, std::ostream *stream)
{
    *stream << (value.isValid() ? value.typeName() : "nothing") << ' '
            << platform::description(value).toStdString();
}

inline void PrintTo(const QVariantMap &dictionary, std::ostream *stream)
{
    *stream << platform::description(dictionary).toStdString();
}

inline void PrintTo(const QRectF &rect, std::ostream *stream)
{
    *stream << '(' << rect.x() << ", " << rect.y() << ", " << rect.width() << ", " << rect.height() << ')';
}

namespace platform {

inline void PrintTo(const Error &error, std::ostream *stream)
{
    *stream << error.domain.toStdString() << ' ' << error.code << " \""
            << error.localizedDescription.toStdString() << '"';
}

inline void PrintTo(const Color &color, std::ostream *stream)
{
    *stream << "rgba(" << color.red << ", " << color.green << ", " << color.blue << ", " << color.alpha
            << ')';
}

inline void PrintTo(const Font &font, std::ostream *stream)
{
    *stream << (font.bold ? "bold " : "") << font.size;
}

} // namespace platform
