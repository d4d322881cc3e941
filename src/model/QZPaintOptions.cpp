#include "model/QZPaintOptions.h"

namespace {

QZPaintOptions chosen;

} // namespace

const QZPaintOptions& QZPaintOptions::current()
{
    return chosen;
}

void QZPaintOptions::setCurrent(const QZPaintOptions& options)
{
    chosen = options;
}
