#pragma once

#include <QLatin1StringView>

/// The names that hosts and figures tell each other things by: notifications, what they carry, and the keys of the
/// host's context.

/// Posted by a layer when a figure's creation or edit ends; the object is the layer.
inline constexpr QLatin1StringView QZPaintGraphFinishedEditingNotification("QZPaintGraphFinishedEditingNotification");
/// Posted to keep the palette's chosen tool in step; the object is a figure, or none.
inline constexpr QLatin1StringView QZPaintSyncGraphTypeNotification("QZPaintSyncGraphTypeNotification");

/// Posted when the range-statistics band was dragged or closed. Carries "timeType" and, of a drag, the edges "x1" and
/// "x2" (px) and "dragType".
inline constexpr QLatin1StringView QZRangeStatisticsTimeChangedNotification("QZRangeStatisticsTimeChangedNotification");
namespace QZRangeStatistics {
inline constexpr QLatin1StringView timeTypeKey("timeType");
inline constexpr QLatin1StringView x1Key("x1");
inline constexpr QLatin1StringView x2Key("x2");
inline constexpr QLatin1StringView dragTypeKey("dragType");

inline constexpr unsigned timeTypeDragged = 4;
inline constexpr unsigned timeTypeClosed = 5;

inline constexpr unsigned dragTypeFirstPoint = 0;
inline constexpr unsigned dragTypeSecondPoint = 1;
inline constexpr unsigned dragTypeToLeft = 2;
inline constexpr unsigned dragTypeToRight = 3; ///< or not at all
} // namespace QZRangeStatistics

/// True in the host's context, as key and sub-key alike, while mouse input belongs to a figure in creation.
inline constexpr QLatin1StringView QZContextIsPaintEditing("CONTEXT_IS_PAINT_EDITING");
