#include "tiltpole/controls/CGraphMagnetic_XZ.h"

namespace tiltpole {

CGraphMagnetic_XZ::CGraphMagnetic_XZ() : plot_(*this, detail::kPlotXZ) {}

CGraphMagnetic_XZ::~CGraphMagnetic_XZ() = default;

int CGraphMagnetic_XZ::Create(const wchar_t* /*ClassName*/, const wchar_t* /*WindowName*/,
                              std::uint32_t Style, const Rect& Place, ParentWindow Parent,
                              unsigned Id) {
  plot_.Create(Style, Place, Parent, Id);
  // Deliberate: hosts get 1 whatever became of the window.
  return 1;
}

void CGraphMagnetic_XZ::AddTrackPoint(int x, int y, int z) {
  plot_.AddTrackPoint({x, y, z});
  AnnounceValue();
}

void CGraphMagnetic_XZ::AddCenterPoint(int x, int y, int z) { plot_.AddCenterPoint({x, y, z}); }

void CGraphMagnetic_XZ::Clear() {
  plot_.Clear();
  AnnounceValue();
}

void CGraphMagnetic_XZ::ZoomAll() { plot_.ZoomAll(); }

int CGraphMagnetic_XZ::GetDistance(const Point& a, const Point& b) const {
  return detail::DistanceOf(a, b);
}

void CGraphMagnetic_XZ::DrawTrackPoints(DrawingContext* context) { plot_.DrawTrackPoints(context); }

void CGraphMagnetic_XZ::DrawCenterPoints(DrawingContext* context) {
  plot_.DrawCenterPoints(context);
}

void CGraphMagnetic_XZ::InvalidateCtrl() { plot_.InvalidateCtrl(); }

void CGraphMagnetic_XZ::WorldToClient(int WorldX, int WorldV, int& ClientX, int& ClientY) const {
  plot_.WorldToClient(WorldX, WorldV, ClientX, ClientY);
}

void CGraphMagnetic_XZ::ClientToWorld(int /*ClientX*/, int ClientY, int& WorldX,
                                      int& WorldV) const {
  plot_.ClientToWorld(ClientY, WorldX, WorldV);
}

int CGraphMagnetic_XZ::ConfigSave() { return plot_.ConfigSave(); }

int CGraphMagnetic_XZ::ConfigRead() { return plot_.ConfigRead(); }

void CGraphMagnetic_XZ::OnPaint() { plot_.Paint(); }

Size CGraphMagnetic_XZ::PreferredSize() const { return {205, 205}; }

std::wstring CGraphMagnetic_XZ::AccessibleName() const { return L"Magnetometer readings, x and z"; }

std::wstring CGraphMagnetic_XZ::AccessibleValue() const { return plot_.CountText(); }

}  // namespace tiltpole
