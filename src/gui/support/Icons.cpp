#include "gui/support/Icons.h"

#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <functional>

namespace arden::gui {
namespace {

using Painter = std::function<void(QPainter&, qreal)>;  // draws into a square of side s

// Paints the drawing at whatever size is asked for, when it is asked for: nothing is drawn
// at start-up for icons that are not on screen yet, and every scale gets a sharp picture.
class PaintedIconEngine : public QIconEngine {
public:
    explicit PaintedIconEngine(Painter draw) : draw_(std::move(draw)) {}
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        const qreal dpr = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
        painter->drawPixmap(rect, scaledPixmap(rect.size(), mode, state, dpr));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return scaledPixmap(size, mode, state, 1.0);
    }
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal scale) override {
        const int side = qMax(1, int(qMin(size.width(), size.height()) * scale));
        const quint64 key = (quint64(side) << 8) | quint64(mode);
        if (auto it = cache_.constFind(key); it != cache_.constEnd()) return *it;
        QPixmap pm(side, side);
        pm.fill(Qt::transparent);
        {
            QPainter p(&pm);
            p.setRenderHint(QPainter::Antialiasing);
            if (mode == QIcon::Disabled) p.setOpacity(0.4);
            draw_(p, side);
        }
        pm.setDevicePixelRatio(scale);
        cache_.insert(key, pm);
        return pm;
    }
    QSize actualSize(const QSize& size, QIcon::Mode, QIcon::State) override { return size; }
    QIconEngine* clone() const override { return new PaintedIconEngine(draw_); }

private:
    Painter draw_;
    QHash<quint64, QPixmap> cache_;
};

QIcon render(const Painter& draw) { return QIcon(new PaintedIconEngine(draw)); }

void drawMonitor(QPainter& p, qreal s, const QColor& screen) {
    p.setPen(QPen(QColor(40, 40, 48), s / 16));
    p.setBrush(screen);
    p.drawRoundedRect(QRectF(s * 0.08, s * 0.12, s * 0.84, s * 0.58), s * 0.06, s * 0.06);
    p.setBrush(QColor(90, 90, 100));
    p.drawRect(QRectF(s * 0.42, s * 0.70, s * 0.16, s * 0.12));
    p.drawRoundedRect(QRectF(s * 0.24, s * 0.82, s * 0.52, s * 0.08), s * 0.03, s * 0.03);
}

void drawCross(QPainter& p, qreal s) {
    p.setPen(QPen(QColor(200, 30, 30), s / 8, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(s * 0.55, s * 0.55), QPointF(s * 0.92, s * 0.92));
    p.drawLine(QPointF(s * 0.92, s * 0.55), QPointF(s * 0.55, s * 0.92));
}

void drawPlay(QPainter& p, qreal s, const QColor& c, QRectF box) {
    QPainterPath tri;
    tri.moveTo(box.left(), box.top());
    tri.lineTo(box.right(), box.center().y());
    tri.lineTo(box.left(), box.bottom());
    tri.closeSubpath();
    p.setPen(QPen(c.darker(140), s / 24));
    p.setBrush(c);
    p.drawPath(tri);
}

void drawPause(QPainter& p, qreal s) {
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(230, 160, 20));
    p.drawRect(QRectF(s * 0.58, s * 0.55, s * 0.12, s * 0.38));
    p.drawRect(QRectF(s * 0.78, s * 0.55, s * 0.12, s * 0.38));
}

// A rounded badge with a short label: the device icons.
void drawBadge(QPainter& p, qreal s, const QColor& fill, const QString& label) {
    p.setPen(QPen(fill.darker(150), s / 20));
    p.setBrush(fill);
    p.drawRoundedRect(QRectF(s * 0.06, s * 0.06, s * 0.88, s * 0.88), s * 0.18, s * 0.18);
    QFont f;
    f.setBold(true);
    f.setPixelSize(qMax(6, int(s * (label.size() > 3 ? 0.27 : 0.36))));
    p.setFont(f);
    p.setPen(Qt::white);
    p.drawText(QRectF(0, 0, s, s), Qt::AlignCenter, label);
}

}  // namespace

QIcon machineIcon(const QString& key) {
    static QHash<QString, QIcon> cache;
    if (auto it = cache.constFind(key); it != cache.constEnd()) return *it;
    const bool old = key.startsWith("Old");
    const QColor screen = old ? QColor(150, 155, 165) : QColor(60, 130, 210);
    const QString state = old ? key.mid(3) : key;
    QIcon icon = render([=](QPainter& p, qreal s) {
        drawMonitor(p, s, screen);
        if (state.contains("Missing")) drawCross(p, s);
        else if (state.contains("Running")) drawPlay(p, s, QColor(40, 170, 60), QRectF(s * 0.56, s * 0.52, s * 0.38, s * 0.42));
        else if (state.contains("Paused")) drawPause(p, s);
    });
    cache.insert(key, icon);
    return icon;
}

QIcon deviceIcon(int type) {
    struct Look { const char* label; QColor fill; };
    static const Look kLooks[] = {
        {"CPU", QColor(70, 100, 170)},  {"RAM", QColor(40, 140, 120)},  {"FD", QColor(120, 110, 90)},
        {"LPT", QColor(150, 100, 60)},  {"COM", QColor(160, 90, 110)},  {"SND", QColor(190, 120, 30)},
        {"NIC", QColor(40, 120, 190)},  {"USB", QColor(90, 90, 160)},   {"IDE", QColor(100, 120, 130)},
        {"SCSI", QColor(110, 90, 140)}, {"HD", QColor(80, 80, 90)},     {"CD", QColor(170, 150, 40)},
        {"GEN", QColor(130, 100, 150)}, {"DSP", QColor(30, 150, 170)},  {"MS", QColor(120, 130, 60)},
        {"SATA", QColor(60, 130, 100)}, {"NVMe", QColor(150, 70, 80)},
    };
    static QHash<int, QIcon> cache;
    if (type < 0 || type >= int(std::size(kLooks))) return {};
    if (auto it = cache.constFind(type); it != cache.constEnd()) return *it;
    const Look& look = kLooks[type];
    QIcon icon = render([=](QPainter& p, qreal s) { drawBadge(p, s, look.fill, QString::fromLatin1(look.label)); });
    cache.insert(type, icon);
    return icon;
}

QIcon toolbarIcon(const QString& key) {
    static QHash<QString, QIcon> cache;
    if (auto it = cache.constFind(key); it != cache.constEnd()) return *it;
    QIcon icon = render([=](QPainter& p, qreal s) {
        const qreal w = s / 16;
        if (key == "New") {
            drawMonitor(p, s, QColor(60, 130, 210));
            p.setPen(QPen(QColor(30, 160, 60), w * 2.4, Qt::SolidLine, Qt::RoundCap));
            p.drawLine(QPointF(s * 0.72, s * 0.50), QPointF(s * 0.72, s * 0.94));
            p.drawLine(QPointF(s * 0.50, s * 0.72), QPointF(s * 0.94, s * 0.72));
        } else if (key == "Open") {
            p.setPen(QPen(QColor(150, 110, 20), w));
            p.setBrush(QColor(240, 200, 80));
            QPainterPath folder;
            folder.moveTo(s * 0.06, s * 0.22);
            folder.lineTo(s * 0.40, s * 0.22);
            folder.lineTo(s * 0.48, s * 0.32);
            folder.lineTo(s * 0.94, s * 0.32);
            folder.lineTo(s * 0.94, s * 0.86);
            folder.lineTo(s * 0.06, s * 0.86);
            folder.closeSubpath();
            p.drawPath(folder);
        } else if (key == "Save") {
            p.setPen(QPen(QColor(30, 50, 90), w));
            p.setBrush(QColor(60, 100, 180));
            p.drawRoundedRect(QRectF(s * 0.10, s * 0.10, s * 0.80, s * 0.80), s * 0.06, s * 0.06);
            p.setBrush(Qt::white);
            p.drawRect(QRectF(s * 0.24, s * 0.10, s * 0.52, s * 0.30));
            p.setBrush(QColor(200, 205, 215));
            p.drawRect(QRectF(s * 0.22, s * 0.56, s * 0.56, s * 0.34));
        } else if (key == "Changes") {
            // A page with a removed (red) and an added (green) line.
            p.setPen(QPen(QColor(90, 90, 100), w));
            p.setBrush(Qt::white);
            p.drawRect(QRectF(s * 0.16, s * 0.08, s * 0.68, s * 0.84));
            p.setPen(Qt::NoPen);
            p.setBrush(QColor(200, 50, 50));
            p.drawRect(QRectF(s * 0.26, s * 0.30, s * 0.48, s * 0.12));
            p.setBrush(QColor(40, 160, 70));
            p.drawRect(QRectF(s * 0.26, s * 0.56, s * 0.48, s * 0.12));
        } else if (key == "Close") {
            p.setPen(QPen(QColor(190, 40, 40), w * 2.6, Qt::SolidLine, Qt::RoundCap));
            p.drawLine(QPointF(s * 0.22, s * 0.22), QPointF(s * 0.78, s * 0.78));
            p.drawLine(QPointF(s * 0.78, s * 0.22), QPointF(s * 0.22, s * 0.78));
        } else if (key == "Run") {
            drawPlay(p, s, QColor(40, 170, 60), QRectF(s * 0.20, s * 0.12, s * 0.66, s * 0.76));
        } else if (key == "Favorites") {
            QPainterPath star;
            for (int i = 0; i < 10; ++i) {
                const qreal r = (i % 2 ? 0.20 : 0.45) * s;
                const qreal a = -M_PI / 2 + i * M_PI / 5;
                QPointF pt(s / 2 + r * std::cos(a), s * 0.53 + r * std::sin(a));
                i ? star.lineTo(pt) : star.moveTo(pt);
            }
            star.closeSubpath();
            p.setPen(QPen(QColor(170, 120, 0), w));
            p.setBrush(QColor(250, 200, 40));
            p.drawPath(star);
        }
    });
    cache.insert(key, icon);
    return icon;
}

}  // namespace arden::gui
