#pragma once

#include "model/QZDrawingTypes.h"
#include "model/QZPaintChart.h"
#include "platform/QZNotificationCenter.h"

#include <QWidget>

#include <array>
#include <memory>
#include <vector>

class QPainter;
class QZGraphDatabase;
class QZPaintLayer;
class QZPaintLayerHost;
class QZPaintOverlay;
class QZPaintSplitView;
class QZStoredGroup;

/// The view that a host lays over one chart pane. It owns the pane's paint layer, shows it above whatever the host puts
/// inside, and is where the library asks the host's chart: a host subclasses it and overrides the hooks. The defaults
/// are neutral: a bare view works but places every figure at its origin.
///
/// Points are in this view's coordinates: px, origin at the bottom left, y upwards. A host's chart widget inside the
/// view should be transparent to the mouse, so that events reach the split view around the panes.
class QZPaintManagerView : public QWidget, public QZPaintChart {
    Q_OBJECT
public:
    explicit QZPaintManagerView(QWidget* parent = nullptr);
    QZPaintManagerView(const QZPaintManagerView&) = delete;
    QZPaintManagerView& operator=(const QZPaintManagerView&) = delete;
    ~QZPaintManagerView() override;

    [[nodiscard]] const std::shared_ptr<QZPaintLayer>& paintLayer() const { return paintLayer_; }
    /// The split view that the pane stands in, or null.
    [[nodiscard]] QZPaintSplitView* splitView() const;
    /// That split view, or what stands in for it.
    [[nodiscard]] QZPaintLayerHost& layerHost() const;
    /// The tools that the pane accepts, an OR of QZShapeType.
    [[nodiscard]] virtual std::int64_t enableTypes() const { return QZAllEnabledTypes; }
    /// Whether the current figure is being dragged.
    [[nodiscard]] bool isDragging() const;

    /// Asks for a redraw of the figures: a host calls it after every change of its scroll or scale.
    void displayPaintLayer();
    /// Draws the figures into a picture of the pane, in this view's Qt coordinates (px, y downwards) and clipped to
    /// validateRect, on any paint device: lines, dashes and texts reach a vector device as such. A screen's painter
    /// that does not scale gets the same pixels as the screen. What belongs to the hand and not to the picture is left
    /// out: handles, a selected note's frame, and the figure in creation; hidden figures as ever. `painter` gets its
    /// state back. The chart under the figures is the host's to draw.
    void drawGraphs(QPainter& painter) const;
    void viewDidEndLiveResize();
    void appSkinStyleHasChanged();
    void qzAppWillTerminate();
    /// Takes the view out of its parent for good: it no longer follows theme and user. The caller owns it then.
    void removeFromSuperview();

    /// The area in which figures are drawn and may be dragged. Starts as the view's frame in its parent's coordinates;
    /// a host sets it whenever its chart area changes.
    [[nodiscard]] QZRect validateRect() const override { return validateRect_; }
    void setValidateRect(QZRect rect);
    [[nodiscard]] QZPoint convertToPrecisionPoint(QZPoint point) const override;

    // Hooks with their neutral defaults.
    [[nodiscard]] std::optional<QZPaintLogicAxis> convertFromPoint(QZPoint point) const override;
    [[nodiscard]] QZPoint convertFromLogicAxis(const QZPaintLogicAxis& axis) const override;
    [[nodiscard]] bool canBeDraggedToLeft(QZPoint point) const override;
    [[nodiscard]] bool canBeDraggedToRight(QZPoint point) const override;
    [[nodiscard]] double convertXForMagnet(double x, bool canOverflow) const override;
    [[nodiscard]] double getXPointWithLocation(float location, int gapCount) const override;
    bool calcRegressionData(QZRegressionCalcData& data) const override;
    bool calcBoxLineData(QZBoxLineCalcData& data) const override;
    [[nodiscard]] std::optional<QZPaintRetangleModel> infomationForRetangle(QZPoint start, QZPoint endPoint,
                                                                            int deltaCount) const override;
    [[nodiscard]] QZPoint convertPointForMagnet(QZPoint point, std::uint64_t style) const override;

    /// Shows the range-statistics band between two bars, given in the host's encoding of dates and times.
    virtual void displayRangeStatisticsGraphFromDate(std::int32_t startDate, std::int32_t startTime,
                                                     std::int32_t endDate, std::int32_t endTime);
    virtual void removeRangeStatisticsGraph();

    // The store, see QZPaintManagerViewStore.cpp. A group is what one pane shows for one stock, cycle and view
    // identifier; the file belongs to the login user. Nothing here throws; what goes wrong is in the log.

    /// Replaces the pane's figures by the stored group and makes it the current one. A tool that is armed in the first
    /// pane of the split view is armed here too.
    void loadDB(const QString& stockCode, std::uint64_t cycle, const QString& viewIdentiry);
    /// Replaces the stored group by the pane's figures and makes it the current one, once for each load: further saves,
    /// and those of a pane that was never loaded, write nothing. The active pane is emptied. A file that cannot be
    /// written leaves the pane as it is, and the save may be tried again.
    void saveDB(const QString& stockCode, std::uint64_t cycle, const QString& viewIdentiry);
    /// Writes what the user changed in the current group since it was loaded or stored, and takes over what others
    /// wrote into it by then: both sides end up with theirs and ours, minus what either deleted. The figures stay in
    /// the pane and so does the right to save; with nothing to do it only looks. True when the file and the pane agree.
    /// False without a group, after saveDB(), and when the file could not be written: nothing has changed then. Texts
    /// with quotes need QZPaintOptions::bindsTexts.
    bool storeDB();
    /// Whether what the pane shows may be saved or stored: from a load until saveDB(), see
    /// QZPaintOptions::failedLoadBarsSave.
    [[nodiscard]] bool isValidateSaveDB() const { return isValidateSaveDB_; }
    /// The key of a group.
    [[nodiscard]] static QString constructDBIndex(const QString& stockCode, std::uint64_t cycle,
                                                  const QString& viewIdentiry);
    /// A new handle on the login user's file. Handed out even when the file cannot be opened, with a line in the log.
    [[nodiscard]] static std::shared_ptr<QZGraphDatabase> openDBFile();
    /// The handle that all manager views share, null before the first one. Closed whenever a view goes; loading and
    /// saving open it again.
    [[nodiscard]] static std::shared_ptr<QZGraphDatabase> graphDatabase();
    /// "date,time,price;" for each point, the price with six decimals.
    [[nodiscard]] static QString encodeGraphKeyPoints(const std::vector<QZPaintLogicAxis>& axises);
    /// Leaves out what is not three parts. Parts are read as the number that they start with, else 0.
    [[nodiscard]] static std::vector<QZPaintLogicAxis> decodeGraphKeyPoints(const QString& text);
    [[nodiscard]] static QString dbVersion();
    /// Stores the current group while the old user's file is still the shared one.
    void loginUserWillChange();
    /// Goes over to the new user's file, which the first view does for all, and loads the current group from it.
    void loginUserDidChange();

    /// The layer's rectangle (px): the whole view.
    [[nodiscard]] QZRect layerFrame() const;
    /// validateRect in Qt's coordinates, for clipping.
    [[nodiscard]] QRectF flippedValidateRect() const;
    void updateOverlay();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void childEvent(QChildEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void configView();
    void configViewBeforeRelease();
    static void openGraphDatabaseIfAbsent();
    static void closeGraphDatabase();
    void setCurrentGroup(const QString& stockCode, std::uint64_t cycle, const QString& viewIdentiry);
    bool loadGroup(QZGraphDatabase& database);
    bool saveGroup(QZGraphDatabase& database);
    bool mergeGroup(QZGraphDatabase& database);
    void switchToFileOfUser();
    [[nodiscard]] QString groupDescription() const;

    std::shared_ptr<QZPaintLayer> paintLayer_;
    QZPaintOverlay* overlay_ = nullptr; // owned as a child widget
    QZRect validateRect_;
    QString currentStockCode_; // null before the first load or save, as the identifier is
    std::uint64_t currentCycle_ = 0;
    QString currentIdentify_;
    bool isValidateSaveDB_ = false;
    std::unique_ptr<QZStoredGroup> storedGroup_; // what was last read or written of the group
    std::int64_t loadedTypes_ = 0;               // that were accepted when the group was loaded
    std::array<QZObservation, 4> observations_;
};
