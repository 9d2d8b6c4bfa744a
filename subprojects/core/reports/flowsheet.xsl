<?xml version="1.0" encoding="UTF-8"?>
<!-- Shows the table of contents of an XML report, "toc.xml", as a tree of links to the files of the models,
     "<id>.xml" in the same folder. Each entry is named by the category of its model. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="html" encoding="UTF-8" indent="yes"/>

  <xsl:template match="/toc">
    <html>
      <head>
        <meta charset="UTF-8"/>
        <title>Contents of <xsl:value-of select="*[1]/@fullpath"/></title>
        <style type="text/css">
          body { font: 13px helvetica, sans-serif, verdana; margin: 12px; color: #222 }
          h1 { font-size: 20px; color: #BF2636; margin: 4px 0 12px 0 }
          ul { list-style: none; margin: 0; padding-left: 22px; border-left: 1px dotted #BF2636 }
          body > ul { border-left: none; padding-left: 0 }
          li { margin: 3px 0 }
          .category { display: inline-block; width: 64px; font-size: 11px; color: #fff; text-align: center;
                      border-radius: 3px; margin-right: 6px; background: #888 }
          .stream { background: #40D9C9 }
          .flowsheet { background: #BF2636 }
          .unit { background: #3b6fb6 }
          .phase { background: #8a5fb0 }
          .option { background: #b08a2e }
          .type { color: #555 }
          .description { color: #777; font-style: italic }
          footer { margin-top: 16px; border-top: 1px solid #ccc; padding-top: 4px; color: #777 }
        </style>
      </head>
      <body>
        <h1>Contents of <xsl:value-of select="*[1]/@fullpath"/></h1>
        <ul>
          <xsl:apply-templates select="*[@id]"/>
        </ul>
        <footer><xsl:value-of select="version"/> @ <xsl:value-of select="timestamp"/></footer>
      </body>
    </html>
  </xsl:template>

  <!-- An entry and, below it, the entries of the models it holds, in the order of the file. -->
  <xsl:template match="*[@id]">
    <li>
      <span class="category {local-name()}"><xsl:value-of select="local-name()"/></span>
      <a href="{@id}.xml"><xsl:value-of select="@tag"/></a>
      <xsl:text> </xsl:text>
      <span class="type">[<xsl:value-of select="@type"/>]</span>
      <xsl:text> </xsl:text>
      <span class="description"><xsl:value-of select="@description"/></span>
      <xsl:if test="*">
        <ul>
          <xsl:apply-templates select="*"/>
        </ul>
      </xsl:if>
    </li>
  </xsl:template>
</xsl:stylesheet>
