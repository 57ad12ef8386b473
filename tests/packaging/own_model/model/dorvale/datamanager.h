// An annotation model that is not the library's own: it has the operations that the library calls,
// and is made in another way as far as they leave it free.
#pragma once

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

struct ANK_PNT32 {
    float x, y, z;
};

/// Not a number where nobody fills it.
struct ANK_DIR32 {
    ANK_DIR32() : x(NAN), y(NAN), z(NAN) {}
    float x, y, z;
};

struct ANK_MTX32 {
    float element[16];
};

struct ANK_BOX32 {
    ANK_PNT32 corner[2];
};

struct ANK_RGBA32 {
    float r, g, b, a;
};

enum class ANK_STATUS : char { Taken = 'y' };
enum AnkCurveTypeEnum { ACT_CHAIN = 1, ACT_ROUND, ACT_STRAIGHT };
enum class AnkCurveUsageEnum : short { Leading = 1, Extending = 3, Special = 5 };
enum AnkCurveDispTypeEnum : unsigned char {};
enum AnkLeaderTypeEnum { ALT_STRAIGHT = 1, ALT_ROUND };
enum AnkTermTypeEnum : int {};
enum class AnkExtensTypeEnum { Plain = 1 };
enum class AnkSpecLineUsageEnum : long long {};
enum AnkAnchorTypeEnum : int {};
enum AnkTextTypeEnum : int {};
enum class AnkPMITypeEnum : unsigned {};

namespace viewer {

using Numbers = std::vector<double>;

/// Out of memory in so many objects or hand-overs from now; 0 for never.
void failIn(int steps);
/// Takes one of these steps.
void step();
/// The number of objects of the model.
std::size_t alive();

/// An object of the model keeps what it is told, by the name of the operation. Ends the program
/// where it is deleted twice.
class Object {
public:
    Object();
    Object(const Object&);
    Object& operator=(const Object&) = delete;
    virtual ~Object();

    /// Empty where it was not told so.
    Numbers told(const std::string& operation) const;

protected:
    ANK_STATUS tell(const char* operation, const Numbers& numbers);

private:
    std::map<std::string, Numbers> told_;
};

/// A second base with a table of virtual functions of its own.
class Drawable {
public:
    virtual ~Drawable() = default;
    virtual bool dirty() const { return handle_ == nullptr; }

private:
    void* handle_ = nullptr;
};

/// What an object owns. An object that stands in the new list too is kept.
template <typename T> struct Owned {
    std::vector<T*> list;

    Owned() = default;
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() { replace({}); }

    void set(std::vector<T*> next) {
        step();
        replace(next);
    }
    void add(T* object) {
        step();
        list.push_back(object);
    }

private:
    void replace(std::vector<T*> next) {
        list.swap(next);
        for (T* old : next) {
            if (std::find(list.begin(), list.end(), old) == list.end()) {
                delete old;
            }
        }
    }
};

struct Inside;

} // namespace viewer

class Ank_CurveEntity : public viewer::Object {
public:
    virtual AnkCurveTypeEnum GetCurveType() const = 0;
    void SetUsageType(AnkCurveUsageEnum usage);
    ANK_STATUS SetCurveDispStat(bool shown);
    ANK_STATUS SetCurveDispType(AnkCurveDispTypeEnum type);
};

class Ank_PolyLine : public viewer::Drawable, public Ank_CurveEntity {
public:
    ANK_STATUS SetDomain(float start, float end);
    ANK_STATUS SetPoints(const std::vector<ANK_PNT32>& points);
    const std::vector<ANK_PNT32>& GetPoints() const { return points_; }
    AnkCurveTypeEnum GetCurveType() const override;

private:
    std::vector<ANK_PNT32> points_;
};

class Ank_Ellipse : public viewer::Drawable, public Ank_CurveEntity {
public:
    AnkCurveTypeEnum GetCurveType() const override;
    ANK_STATUS SetCenterPoint(const ANK_PNT32& center);
    void SetNormal(const ANK_DIR32& normal);
    void SetOriginDir(const ANK_DIR32& direction);
    ANK_STATUS SetXYZDir(const ANK_DIR32& x, const ANK_DIR32& y, const ANK_DIR32& z);
    ANK_STATUS SetRadius(float first, float second);
    ANK_STATUS SetParameter(float start, float end);
    ANK_STATUS SetDomain(float start, float end);
    ANK_STATUS SetCoordiantePnt(const ANK_PNT32& start, const ANK_PNT32& end);
    void GetCoordinatePnt(ANK_PNT32& start, ANK_PNT32& end) const;
    void GetRadius(float& first, float& second) const;
    ANK_DIR32 GetNormal() const;
    ANK_PNT32 GetCenterPoint() const;
};

class Ank_Line : public viewer::Drawable, public Ank_CurveEntity {
public:
    AnkCurveTypeEnum GetCurveType() const override;
    void SetEndPoint(const ANK_PNT32& end);
    void SetStartPoint(const ANK_PNT32& start);
    ANK_PNT32 GetEndPoint() const;
    ANK_PNT32 GetStartPoint() const;
};

class Ank_Text : public viewer::Object {
public:
    ANK_PNT32 GetInnerLoc() const;
    void SetUsageType(AnkTextTypeEnum usage);
    void SetInnerXYAxis(const ANK_DIR32& x, const ANK_DIR32& y);
    void SetInnerLoc(const ANK_PNT32& location);
    void SetCharSpacing(const float& spacing);
    void SetCharWidthHeight(const float& width, const float& height);
    void SetFont(wchar_t* font);
    void SetText(std::wstring text);

private:
    friend viewer::Inside;
    std::wstring text_;
};

class Ank_Envelope : public viewer::Object {
public:
    void SetAnchorPoint(AnkAnchorTypeEnum type, ANK_PNT32 point);
    void SetFrameColor(ANK_RGBA32 color);
    void SetBackgroundColor(ANK_RGBA32 color);
    void SetFrameFlag(bool drawn);
};

class Ank_ComText : public viewer::Object {
public:
    std::vector<Ank_Text*> GetTexts() const { return texts_.list; }
    void SetEnvelope(Ank_Envelope* envelope) { envelope_.set({envelope}); }
    void SetOuterBox(const ANK_BOX32& box);
    void SetTexts(const std::vector<Ank_Text*>& texts) { texts_.set(texts); }

private:
    friend viewer::Inside;
    viewer::Owned<Ank_Envelope> envelope_;
    viewer::Owned<Ank_Text> texts_;
};

class Ank_SpecialLine : public viewer::Object {
public:
    std::vector<Ank_CurveEntity*> GetCurves() const { return curves_.list; }
    void AddCurve(Ank_CurveEntity* curve) { curves_.add(curve); }
    void SetSpecLinUse(AnkSpecLineUsageEnum usage);

private:
    viewer::Owned<Ank_CurveEntity> curves_;
};

class Ank_Extensionline : public viewer::Object {
public:
    void SetDisplay(bool display);
    void SetCurve(Ank_CurveEntity* curve) { curve_.set({curve}); }
    void SetExLineType(AnkExtensTypeEnum type);

private:
    friend viewer::Inside;
    viewer::Owned<Ank_CurveEntity> curve_;
};

class Ank_Leader : public viewer::Object {
public:
    std::vector<Ank_CurveEntity*> GetAllCurve() const { return curve_.list; }
    void SetStubDelta(bool stub);
    ANK_STATUS SetTerminator(AnkTermTypeEnum type, float size[2], const ANK_PNT32& location,
                             const ANK_DIR32& direction);
    void SetLeaderType(AnkLeaderTypeEnum type);
    ANK_STATUS SetCurve(Ank_CurveEntity* curve);

private:
    viewer::Owned<Ank_CurveEntity> curve_;
};

class Ank_PMI : public viewer::Drawable, public viewer::Object {
public:
    const std::vector<Ank_Leader*>& GetLeaders() const { return leaders_.list; }
    const std::vector<Ank_ComText*>& GetComText() const { return blocks_.list; }
    void SetParallelScreen(bool parallel);
    void SetDisplay(bool display);
    void SetDim(unsigned int dim);
    void SetType(AnkPMITypeEnum type);
    void AddSpecialLine(Ank_SpecialLine* line) { specialLines_.add(line); }
    void SetExLines(const std::vector<Ank_Extensionline*>& lines) { exLines_.set(lines); }
    void SetLeaders(const std::vector<Ank_Leader*>& leaders) { leaders_.set(leaders); }
    void AddComText(Ank_ComText* block) { blocks_.add(block); }
    void SetDefPlane(const ANK_MTX32& plane);

private:
    friend viewer::Inside;
    viewer::Owned<Ank_SpecialLine> specialLines_;
    viewer::Owned<Ank_Extensionline> exLines_;
    viewer::Owned<Ank_Leader> leaders_;
    viewer::Owned<Ank_ComText> blocks_;
};
