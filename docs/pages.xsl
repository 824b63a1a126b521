<?xml version="1.0" encoding="UTF-8"?>
<!-- Turns the headers, as Doxygen's XML has them, into the pages of the manual: the front page, which is the result, and
     beside it one for each family. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform" xmlns:exsl="http://exslt.org/common"
                extension-element-prefixes="exsl" exclude-result-prefixes="exsl">
  <xsl:output method="html" encoding="UTF-8" doctype-system="about:legacy-compat" indent="no"/>

  <!-- Files: the names that the module exports, and what the gallery leaves about its recipes. -->
  <xsl:param name="exports"/>
  <xsl:param name="recipes"/>

  <xsl:key name="declared" match="compounddef | memberdef" use="@id"/>
  <xsl:key name="function" match="memberdef[@kind = 'function']" use="name"/>

  <xsl:variable name="whole" select="/doxygen/compounddef[compoundname = 'tavik.h']"/>
  <xsl:variable name="families" select="/doxygen/compounddef[@kind = 'file' and compoundname != 'tavik.h']"/>
  <xsl:variable name="recipe" select="document($recipes)/recipes/recipe"/>

  <xsl:template match="/doxygen">
    <xsl:call-template name="require-entries"/>
    <xsl:call-template name="front-page"/>
    <xsl:for-each select="$families">
      <xsl:call-template name="family-page"/>
    </xsl:for-each>
  </xsl:template>

  <xsl:template name="require-entries">
    <xsl:variable name="manual" select="/"/>
    <xsl:for-each select="document($exports)/exports/export">
      <xsl:variable name="name" select="string()"/>
      <xsl:for-each select="$manual">
        <xsl:if test="not(normalize-space(key('function', $name)/detaileddescription))">
          <xsl:message terminate="yes">no header has an entry with a text for the export <xsl:value-of select="$name"/></xsl:message>
        </xsl:if>
      </xsl:for-each>
    </xsl:for-each>
  </xsl:template>

  <!-- Pages -->

  <xsl:template name="front-page">
    <html lang="en">
      <xsl:call-template name="head">
        <xsl:with-param name="title">tavik manual</xsl:with-param>
      </xsl:call-template>
      <body>
        <header>
          <h1>tavik manual</h1>
          <p class="about"><xsl:value-of select="$whole/briefdescription"/></p>
          <p class="about">Every export has an entry on its family’s page, made from the comment in the family’s
            header. What all exports share (calls, buffers, the forms of sizes, threads) is told on the page of
            <a href="frame.html">frame</a>. Pictures are the <a href="gallery/index.html">gallery</a>’s.</p>
          <nav>
            <a href="#families">families</a>
            <a href="#exports">exports</a>
            <a href="gallery/index.html">gallery</a>
          </nav>
        </header>
        <main>
          <section id="families">
            <h2>Families</h2>
            <div class="grid">
              <xsl:apply-templates select="$families" mode="card"/>
            </div>
          </section>
          <section id="exports">
            <h2><xsl:value-of select="count($families//memberdef[@kind = 'function'])"/> exports</h2>
            <ul class="exports">
              <xsl:apply-templates select="$families//memberdef[@kind = 'function']" mode="list">
                <xsl:sort select="translate(name, 'ABCDEFGHIJKLMNOPQRSTUVWXYZ', 'abcdefghijklmnopqrstuvwxyz')"/>
              </xsl:apply-templates>
            </ul>
          </section>
        </main>
      </body>
    </html>
  </xsl:template>

  <xsl:template name="family-page">
    <xsl:variable name="family" select="substring-before(compoundname, '.h')"/>
    <exsl:document href="{$family}.html" method="html" encoding="UTF-8" doctype-system="about:legacy-compat">
      <html lang="en">
        <xsl:call-template name="head">
          <xsl:with-param name="title"><xsl:value-of select="$family"/> · tavik manual</xsl:with-param>
        </xsl:call-template>
        <body>
          <header>
            <p><a href="index.html">tavik manual</a></p>
            <h1><xsl:value-of select="$family"/></h1>
            <p class="about"><xsl:value-of select="briefdescription"/></p>
            <nav>
              <xsl:for-each select="$families">
                <xsl:variable name="name" select="substring-before(compoundname, '.h')"/>
                <a href="{$name}.html">
                  <xsl:if test="$name = $family"><xsl:attribute name="aria-current">page</xsl:attribute></xsl:if>
                  <xsl:value-of select="$name"/>
                </a>
              </xsl:for-each>
              <a href="gallery/index.html">gallery</a>
            </nav>
          </header>
          <main>
            <ul class="exports">
              <xsl:apply-templates select=".//memberdef[@kind = 'function']" mode="list">
                <xsl:sort select="location/@line" data-type="number"/>
              </xsl:apply-templates>
            </ul>
            <section class="text">
              <p><code>#include &lt;<xsl:value-of select="location/@file"/>&gt;</code></p>
              <xsl:apply-templates select="detaileddescription"/>
            </section>
            <xsl:apply-templates select="key('declared', innerclass/@refid)" mode="record">
              <xsl:sort select="location/@line" data-type="number"/>
            </xsl:apply-templates>
            <xsl:apply-templates select="sectiondef[@kind = 'func']"/>
            <xsl:apply-templates select="sectiondef[@kind = 'user-defined']"/>
          </main>
        </body>
      </html>
    </exsl:document>
  </xsl:template>

  <xsl:template name="head">
    <xsl:param name="title"/>
    <head>
      <meta name="viewport" content="width=device-width, initial-scale=1"/>
      <title><xsl:value-of select="$title"/></title>
      <link rel="stylesheet" href="page.css"/>
      <link rel="stylesheet" href="manual.css"/>
    </head>
  </xsl:template>

  <!-- Parts of pages -->

  <xsl:template match="compounddef" mode="card">
    <xsl:variable name="family" select="substring-before(compoundname, '.h')"/>
    <xsl:variable name="picture" select="$recipe[export = current()//memberdef/name][last()]"/>
    <article>
      <xsl:if test="$picture">
        <a class="picture" href="{$family}.html" aria-hidden="true" tabindex="-1">
          <img src="gallery/{$picture/@picture}" alt="" width="{$picture/@width}" height="{$picture/@height}"/>
        </a>
      </xsl:if>
      <div class="text">
        <h3><a href="{$family}.html"><xsl:value-of select="$family"/></a></h3>
        <p><xsl:value-of select="briefdescription"/></p>
      </div>
    </article>
  </xsl:template>

  <xsl:template match="memberdef" mode="list">
    <li>
      <a>
        <xsl:attribute name="href"><xsl:apply-templates select="." mode="address"/></xsl:attribute>
        <xsl:value-of select="name"/>
      </a>
    </li>
  </xsl:template>

  <xsl:template match="compounddef" mode="record">
    <section class="entry" id="{compoundname}">
      <div class="text">
        <h3>struct <xsl:value-of select="compoundname"/></h3>
        <xsl:apply-templates select="detaileddescription"/>
      </div>
    </section>
  </xsl:template>

  <xsl:template match="sectiondef">
    <xsl:if test="header">
      <div class="section text">
        <h2><xsl:value-of select="header"/></h2>
        <xsl:apply-templates select="description"/>
      </div>
    </xsl:if>
    <xsl:apply-templates select="memberdef[@kind = 'function']"/>
  </xsl:template>

  <xsl:template match="memberdef">
    <section class="entry" id="{name}">
      <div class="text">
        <h3><xsl:value-of select="name"/></h3>
        <p class="prototype">
          <code>
            <xsl:apply-templates select="type"/>
            <xsl:text> </xsl:text>
            <strong><xsl:value-of select="name"/></strong>
            <xsl:text>(</xsl:text>
            <xsl:apply-templates select="param"/>
            <xsl:text>)</xsl:text>
          </code>
        </p>
        <xsl:apply-templates select="detaileddescription"/>
      </div>
      <xsl:variable name="pictures" select="$recipe[export = current()/name]"/>
      <xsl:if test="$pictures">
        <div class="pictures">
          <xsl:apply-templates select="$pictures"/>
        </div>
      </xsl:if>
    </section>
  </xsl:template>

  <xsl:template match="param">
    <xsl:if test="position() > 1">
      <xsl:text>, </xsl:text>
    </xsl:if>
    <span>
      <xsl:apply-templates select="type"/>
      <xsl:if test="substring(type, string-length(type)) != '*'">
        <xsl:text> </xsl:text>
      </xsl:if>
      <var><xsl:value-of select="declname"/></var>
    </span>
  </xsl:template>

  <xsl:template match="recipe">
    <figure>
      <a href="gallery/{@picture}">
        <img src="gallery/{@picture}" alt="{@title}" width="{@width}" height="{@height}" loading="lazy"/>
      </a>
      <figcaption><a href="gallery/index.html#{@name}"><xsl:value-of select="@title"/></a></figcaption>
    </figure>
  </xsl:template>

  <!-- Text -->

  <xsl:template match="para">
    <p><xsl:apply-templates/></p>
  </xsl:template>

  <!-- A paragraph that is but a list or a formula. -->
  <xsl:template match="para[variablelist or preformatted]">
    <xsl:apply-templates select="*"/>
  </xsl:template>

  <xsl:template match="variablelist">
    <dl><xsl:apply-templates/></dl>
  </xsl:template>

  <xsl:template match="varlistentry">
    <dt><xsl:apply-templates select="term/node()"/></dt>
  </xsl:template>

  <xsl:template match="listitem">
    <dd><xsl:apply-templates/></dd>
  </xsl:template>

  <xsl:template match="preformatted">
    <pre><xsl:apply-templates/></pre>
  </xsl:template>

  <xsl:template match="computeroutput">
    <code><xsl:apply-templates/></code>
  </xsl:template>

  <xsl:template match="ref">
    <a>
      <xsl:attribute name="href"><xsl:apply-templates select="key('declared', @refid)" mode="address"/></xsl:attribute>
      <xsl:apply-templates/>
    </a>
  </xsl:template>

  <!-- Addresses -->

  <xsl:template match="*" mode="address">
    <xsl:value-of select="substring-before(substring-after(location/@file, 'tavik/'), '/')"/>
    <xsl:text>.html</xsl:text>
    <xsl:if test="not(@kind = 'file')">
      <xsl:text>#</xsl:text>
      <xsl:value-of select="name | compoundname"/>
    </xsl:if>
  </xsl:template>
</xsl:stylesheet>
