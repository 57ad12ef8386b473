// The members of `CDimSymUitity` that a host reaches by deriving from it.
#pragma once

#include <dorvale/dorvale.h>

namespace dorvale::test {

class Members : public CDimSymUitity {
public:
    using CDimSymUitity::BuToFract;
    using CDimSymUitity::CheckAngDim;
    using CDimSymUitity::ConvertToAnkCurve;
    using CDimSymUitity::polyLinFun;
    using CDimSymUitity::SeStrCre;
    using CDimSymUitity::SeStrdec;
    using CDimSymUitity::SeStrfrc;
    using CDimSymUitity::SeStritoa;
};

} // namespace dorvale::test
