<?xml version="1.0" encoding="UTF-8"?>
<!-- Shows one model file of an XML report as a page: where the model stands in the tree, its quantities,
     strings and integers, and links to the models around it. Files of other models are "<id>.xml" in the
     same folder, the table of contents is "toc.xml". -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="html" encoding="UTF-8" indent="yes"/>

  <xsl:template match="/model">
    <html>
      <head>
        <meta charset="UTF-8"/>
        <title><xsl:value-of select="@fullpath"/> [<xsl:value-of select="@type"/>]</title>
        <style type="text/css">
          body { font: 13px helvetica, sans-serif, verdana; margin: 12px; color: #222 }
          h1 { font-size: 20px; color: #BF2636; margin: 4px 0 }
          h1 .type { color: #555; font-weight: normal }
          h2 { font-size: 14px; color: #fff; background: #BF2636; padding: 4px 8px; margin: 16px 0 0 0 }
          nav { margin: 4px 0 }
          nav a, nav span { margin-right: 6px }
          .description { color: #555; margin-bottom: 8px }
          .siblings { float: right }
          table { border-collapse: collapse; width: 100%; border: 2px solid #BF2636 }
          th { text-align: left; background: #f3d3d6; padding: 3px 8px }
          td { padding: 2px 8px; border-top: 1px solid #ddd }
          td.number { text-align: right; font-family: monospace }
          tr.input td.number { background: #d9f7f4 }
          tr.output td.number { font-weight: bold }
          .flag { font-size: 11px; color: #fff; background: #40D9C9; padding: 0 4px; border-radius: 3px }
          .flag.output { background: #BF2636 }
          .empty { color: #888; font-style: italic; padding: 4px 8px }
          footer { margin-top: 16px; border-top: 1px solid #ccc; padding-top: 4px; color: #777 }
        </style>
      </head>
      <body>
        <nav>
          <a href="toc.xml">Contents</a>
          <xsl:text>: </xsl:text>
          <!-- The file lists the ancestors from the parent up; a path reads from the root down. -->
          <xsl:for-each select="breadcrumbs/breadcrumb">
            <xsl:sort select="position()" data-type="number" order="descending"/>
            <a href="{@id}.xml" title="{@description}"><xsl:value-of select="@tag"/></a>
            <span>&#8250;</span>
          </xsl:for-each>
          <span><xsl:value-of select="@tag"/></span>
          <span class="siblings">
            <xsl:for-each select="preceding-sibling">
              <a href="{@id}.xml" title="{@description}">&#8592; <xsl:value-of select="@tag"/></a>
            </xsl:for-each>
            <xsl:for-each select="following-sibling">
              <a href="{@id}.xml" title="{@description}"><xsl:value-of select="@tag"/> &#8594;</a>
            </xsl:for-each>
          </span>
        </nav>
        <h1><xsl:value-of select="@fullpath"/><xsl:text> </xsl:text>
          <span class="type">[<xsl:value-of select="@type"/>]</span></h1>
        <div class="description"><xsl:value-of select="@description"/></div>

        <h2>Quantities</h2>
        <xsl:choose>
          <xsl:when test="quantities/quantity">
            <table>
              <tr><th>Tag</th><th>Value</th><th>Unit</th><th></th><th>Description</th></tr>
              <xsl:for-each select="quantities/quantity">
                <tr>
                  <xsl:attribute name="class">
                    <xsl:if test="@input = 'true'">input </xsl:if>
                    <xsl:if test="@output = 'true'">output</xsl:if>
                  </xsl:attribute>
                  <td><xsl:value-of select="@tag"/></td>
                  <td class="number"><xsl:value-of select="@value"/></td>
                  <td><xsl:value-of select="@unit"/></td>
                  <td>
                    <xsl:if test="@input = 'true'"><span class="flag">input</span></xsl:if>
                    <xsl:if test="@output = 'true'"><span class="flag output">output</span></xsl:if>
                  </td>
                  <td><xsl:value-of select="@description"/></td>
                </tr>
              </xsl:for-each>
            </table>
          </xsl:when>
          <xsl:otherwise><div class="empty">none</div></xsl:otherwise>
        </xsl:choose>

        <h2>Strings</h2>
        <xsl:call-template name="values">
          <xsl:with-param name="items" select="strings/string"/>
        </xsl:call-template>

        <h2>Integers</h2>
        <xsl:call-template name="values">
          <xsl:with-param name="items" select="integers/integer"/>
        </xsl:call-template>

        <h2>Submodels</h2>
        <xsl:choose>
          <xsl:when test="submodels/submodel">
            <table>
              <tr><th>Tag</th><th>Type</th><th>Description</th></tr>
              <xsl:for-each select="submodels/submodel">
                <tr>
                  <td><a href="{@id}.xml"><xsl:value-of select="@tag"/></a></td>
                  <td><xsl:value-of select="@type"/></td>
                  <td><xsl:value-of select="@description"/></td>
                </tr>
              </xsl:for-each>
            </table>
          </xsl:when>
          <xsl:otherwise><div class="empty">none</div></xsl:otherwise>
        </xsl:choose>

        <footer><xsl:value-of select="version"/> @ <xsl:value-of select="timestamp"/></footer>
      </body>
    </html>
  </xsl:template>

  <!-- A table of tag, value and description, or a note that there is nothing. -->
  <xsl:template name="values">
    <xsl:param name="items"/>
    <xsl:choose>
      <xsl:when test="$items">
        <table>
          <tr><th>Tag</th><th>Value</th><th>Description</th></tr>
          <xsl:for-each select="$items">
            <tr>
              <td><xsl:value-of select="@tag"/></td>
              <td class="number"><xsl:value-of select="@value"/></td>
              <td><xsl:value-of select="@description"/></td>
            </tr>
          </xsl:for-each>
        </table>
      </xsl:when>
      <xsl:otherwise><div class="empty">none</div></xsl:otherwise>
    </xsl:choose>
  </xsl:template>
</xsl:stylesheet>
