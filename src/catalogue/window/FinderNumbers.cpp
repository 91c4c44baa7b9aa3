#include "catalogue/window/FinderNumbers.h"

#include <QLocale>

namespace quillbay {

QString Grouped(double number) {
    QLocale locale;
    locale.setNumberOptions(locale.numberOptions() & ~QLocale::OmitGroupSeparator);
    return locale.toString(number, 'f', 0);
}

QString Grouped(std::size_t number) { return Grouped(static_cast<double>(number)); }

QString Masked(std::uint64_t number) {
    if (number == 0) return {};
    QString text = QString::number(number);
    const QString separator = QLocale().groupSeparator();
    for (auto at = text.size() - 3; at > 0; at -= 3)
        text.insert(at, separator);
    return text;
}

} // namespace quillbay
