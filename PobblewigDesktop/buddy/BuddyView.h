#pragma once

#include "PobblewigDesktop/buddy/BuddyPainter.h"

#include "buddy/BuddyAnimation.h"
#include "buddy/BuddyArtist.h"

#include <QAbstractButton>
#include <QTimer>

namespace pobblewig {

/// Draws the buddy and keeps it alive. The view is as large as its scale asks for, and larger while
/// there is something around the buddy; the feet are in the middle of its lower edge.
///
/// Every pixel of a sprite is a whole number of device pixels, at any scale of the screen. A frame
/// that would look like the one before is not painted.
///
/// For assistive technology the view is a button; the mouse is left to the window around it.
class BuddyView : public QAbstractButton {
    Q_OBJECT

public:
    static constexpr double smallestScale = 0.5;
    static constexpr double largestScale = 3;
    /// Returns seconds that never go back.
    using Clock = std::function<double()>;

    /// Uses a clock of its own unless it is given one.
    explicit BuddyView(QWidget* parent = nullptr, Clock clock = {});

    /// The area that the buddy covers at present. Whatever only floats around it takes no clicks.
    const BuddyShape& shape() const { return m_shape; }
    /// Stays the same until the buddy is told something else.
    const BuddyState& state() const { return m_animation.state(); }
    double sleepAmount() const { return m_animation.sleepAmount(); }
    double now() const { return m_clock(); }

    void setSprite(const MascotSprite& sprite);
    void setSizeScale(double sizeScale);

    /// Sets the colours of the words beside the buddy, and the area where they can be seen from the
    /// next frame on.
    void setTheme(const Palette& palette);
    void setReach(const BuddyReach& reach);

    /// How long nothing must happen before the buddy falls asleep.
    void setSleepDelay(std::chrono::seconds delay);

    /// Adapts to the scale of the screen that the view is on.
    void fitToScreen();

    /// Each of these wakes the buddy up, except `dozeOff`, which lasts until the next of them.
    void setState(const BuddyState& state);
    void pet();
    void stir();
    void dozeOff();

    /// Tell that the buddy is carried by hand, and by how many pixels the window moved for whatever
    /// reason.
    void beginDragging();
    void endDragging();
    void windowMoved(QPointF by);
    /// Let the eyes follow the pointer, in the view's own coordinates, or look ahead again.
    void lookAt(QPointF pointer);
    void lookAhead();

    /// Shows a meme in the place of the body, for some seconds.
    void showMeme(const MemeAnimation& animation, double duration = BuddyMemes::displayDuration);
    void dismissMeme();

    /// The memes that the buddy wears all the time and while it sleeps. They are only for the
    /// mascot that wears memes.
    void setDefaultMeme(const std::optional<BuddyMeme>& meme);
    void setSleepingMeme(const std::optional<BuddyMeme>& meme);

    void setDock(const BuddyDock& dock);

    /// While nobody can see the buddy, it hardly moves and is not painted.
    void setOccluded(bool isOccluded);

Q_SIGNALS:
    /// The view has a new size. Emitted before the shape and the frame that go with it.
    void roomChanged();

    /// Emitted right before the frame with that shape is painted.
    void shapeChanged();

    /// Emitted with every frame, before it is drawn.
    void ticked();
    void sleepAmountChanged(double amount);

    /// Emitted once, after the first frame.
    void appeared();

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void tick();
    void updatePacing();
    /// Called when something has happened: does not wait for the next tick.
    void react();
    void draw();
    void setCanvas(const BuddyCanvas& canvas);

    double m_sizeScale = 1;
    bool m_isOccluded = false;
    bool m_hasAppeared = false;
    Clock m_clock;
    BuddyAnimation m_animation;
    double m_reportedSleep = 0;
    BuddyArtist m_artist;
    BuddyPainter m_painter;
    BuddyCanvas m_canvas;
    BuddyReach m_reach;
    /// The drawing on the screen, and one for the next frame: both keep their memory.
    BuddyDrawing m_drawing;
    BuddyDrawing m_nextDrawing;
    BuddyShape m_shape;
    BuddyShape m_nextShape;
    QTimer m_frameTimer;
};

} // namespace pobblewig
