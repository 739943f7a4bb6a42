#include "station/instruction/SvgCheck.h"

#include <gtest/gtest.h>

#include <string>

using station::svgProblem;

namespace {

const QString RefersOutside = "it refers to something outside of itself";
const QString TooMuch = "it has too many elements";

QByteArray svg(const QByteArray &content)
{
    return "<svg xmlns='http://www.w3.org/2000/svg' width='10' height='10'>" + content + "</svg>";
}

TEST(SvgCheck, ADrawingMayBeDrawn)
{
    EXPECT_EQ(svgProblem(svg("<rect width='5' height='5' fill='red'/>")), "");
    EXPECT_EQ(svgProblem("<?xml version='1.0'?>\n<!DOCTYPE svg>\n" + svg("<g/>")), "");
}

TEST(SvgCheck, ItMayReferToItself)
{
    EXPECT_EQ(svgProblem(svg("<defs><g id='a'/></defs><use href='#a'/><use xlink:href='#a'/>")), "");
    EXPECT_EQ(svgProblem(svg("<rect fill='url(#paint)'/><rect style='fill: url( \"#paint\" )'/>")), "");
    EXPECT_EQ(svgProblem(svg("<image href='data:image/png;base64,AAAA'/>")), "");
}

class SvgOutside : public ::testing::TestWithParam<const char *>
{};

TEST_P(SvgOutside, NothingOutsideIsReferredTo)
{
    EXPECT_EQ(svgProblem(svg(GetParam())), RefersOutside);
}

INSTANTIATE_TEST_SUITE_P(
    References, SvgOutside,
    ::testing::Values("<image href='/etc/passwd'/>", "<image href='lamp.png'/>",
                      "<image xlink:href='file:///etc/passwd'/>", "<image href='http://host/x.png'/>",
                      "<image href='data:image/svg+xml;base64,AAAA'/>", "<use href='other.svg#a'/>",
                      "<rect fill='url(other.svg#a)'/>", "<rect style='fill:URL(http://host/x)'/>",
                      "<style>@import 'x.css';</style>",
                      "<style><![CDATA[rect { fill: url(x.svg#a) }]]></style>",
                      "<?xml-stylesheet href='/etc/passwd'?>", "<a href='http://host/'><rect/></a>"));

TEST(SvgCheck, SomethingElseIsNoSvg)
{
    EXPECT_EQ(svgProblem("<html><svg/></html>"), "it is no SVG");
}

TEST(SvgCheck, ABrokenOneSaysWhere)
{
    const QString problem = svgProblem("<svg>\n<rect>\n</svg>");
    EXPECT_TRUE(problem.startsWith("it is broken (line 3: ")) << problem.toStdString();
    EXPECT_NE(svgProblem("<svg"), "");
}

TEST(SvgCheck, FewElementsThatMeanBillionsAreNotDrawn)
{
    QByteArray content = "<g id='g0'><rect/></g>";
    for (int i = 1; i < 12; ++i) {
        content += "<g id='g" + QByteArray::number(i) + "'>";
        for (int use = 0; use < 10; ++use)
            content += "<use href='#g" + QByteArray::number(i - 1) + "'/>";
        content += "</g>";
    }
    EXPECT_EQ(svgProblem(svg(content)), TooMuch);
}

TEST(SvgCheck, WhatRepeatsItselfIsNotDrawn)
{
    EXPECT_EQ(svgProblem(svg("<g id='a'><use href='#b'/></g><g id='b'><use href='#a'/></g>")), TooMuch);
    EXPECT_EQ(svgProblem(svg("<g id='a'><use href='#a'/></g>")), TooMuch);
}

TEST(SvgCheck, AThousandRepetitionsMayBe)
{
    QByteArray content = "<g id='a'><rect/></g>";
    for (int use = 0; use < 1000; ++use)
        content += "<use href='#a'/>";
    EXPECT_EQ(svgProblem(svg(content)), "");
}

TEST(SvgCheck, NestsNoDeeperThanAnyDrawing)
{
    EXPECT_EQ(svgProblem(svg(QByteArray("<g>").repeated(150) + QByteArray("</g>").repeated(150))), "");
    EXPECT_EQ(svgProblem(svg(QByteArray("<g>").repeated(5000) + QByteArray("</g>").repeated(5000))), TooMuch);
}

TEST(SvgCheck, EntitiesDoNotGrowWithoutEnd)
{
    QByteArray document = "<!DOCTYPE svg [<!ENTITY a0 'xxxxxxxxxx'>";
    for (int i = 1; i < 12; ++i)
        document += "<!ENTITY a" + QByteArray::number(i) + " '" +
                    ("&a" + QByteArray::number(i - 1) + ";").repeated(10) + "'>";
    EXPECT_NE(svgProblem(document + "]>" + svg("<text>&a11;</text>")), "");
}

} // namespace
