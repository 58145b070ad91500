-- Products: header, change history, units with barcodes and prices, extra barcodes, prices and stock per warehouse.

-- TMC counts how often the main barcode occurs among all barcodes. T is 1 for every product.
create table D1801 (
  WL_ID nvarchar(20) not null primary key,
  WL_NAME nvarchar(80),
  WL_GG nvarchar(40),
  WL_YS bit,
  CHECK_KC bit,
  CLASS_ID nvarchar(4),
  DJ float,
  MONEY float,
  KC float,
  USER_ID nvarchar(10),
  BDATE datetime,
  EDATE datetime,
  T int,
  NOTE nvarchar(100),
  cd nvarchar(50),
  PYM nvarchar(80),
  DW_ZH float,
  DW_J_NAME nvarchar(10),
  dwcount int,
  TMC int,
  pict varbinary(max)
)
create index IX_D1801_CLASS_ID on D1801 (CLASS_ID)
go
-- One row for each saved change, with the values after it; BDATE is the time of the change.
create table D1801B (
  noid int identity(1,1) not null primary key,
  WL_ID nvarchar(20),
  WL_NAME nvarchar(80),
  WL_GG nvarchar(40),
  WL_YS bit,
  CHECK_KC bit,
  CLASS_ID nvarchar(4),
  KC float,
  DJ float,
  money float,
  USER_ID nvarchar(10),
  BDATE datetime,
  EDATE datetime,
  T int,
  NOTE nvarchar(100),
  CD nvarchar(50)
)
create index IX_D1801B_WL_ID on D1801B (WL_ID)
go
-- T = 1 is the main unit, one for each product; ABASE is how many main units this unit holds.
create table D1801DW (
  T int,
  WL_ID nvarchar(20),
  DW_ID nvarchar(2),
  TM nvarchar(30),
  ABASE float,
  SJ float,
  VIPSJ float,
  PFJ float,
  PFJ1 float,
  PFJ2 float,
  PFJ3 float,
  PFJ4 float,
  CGJ float,
  adw int identity(1,1) not null primary key,
  COLORVALUE int,
  Y int
)
-- The main unit first: who asks for the units of a product without an order takes the first row.
create index IX_D1801DW_WL_ID on D1801DW (WL_ID, T desc)
create index IX_D1801DW_TM on D1801DW (TM)
create index IX_D1801DW_DW_ID on D1801DW (DW_ID)
go
-- Inserted by position: the order of the columns is fixed.
create table D1801DWTM (
  ADW int,
  TM nvarchar(30)
)
create index IX_D1801DWTM_ADW on D1801DWTM (ADW)
create index IX_D1801DWTM_TM on D1801DWTM (TM)
go
create table D1801DWSJ (
  ADW int,
  CK_ID nvarchar(4),
  SJ float,
  VIPSJ float
)
create index IX_D1801DWSJ_ADW on D1801DWSJ (ADW, CK_ID)
create index IX_D1801DWSJ_CK_ID on D1801DWSJ (CK_ID)
go
create table D1802 (
  WL_ID nvarchar(20),
  CK_ID nvarchar(4),
  KC float,
  DJ float,
  CK_KW nvarchar(20),
  CK_ACCL float,
  BDATE datetime,
  BEGIN_SL float,
  BEGIN_MONEY float,
  CHECK_KC bit
)
create index IX_D1802_WL_ID on D1802 (WL_ID, CK_ID)
create index IX_D1802_CK_ID on D1802 (CK_ID)
go
-- Writes one unit row, or removes it when @status is 0.
create procedure SYS_DW
  @status int = 1,
  @t int = 0,
  @adw int,
  @tm nvarchar(30) = null,
  @dw_id nvarchar(2) = null,
  @abase float = 1,
  @cgj float = 0,
  @pfj float = 0,
  @vipsj float = 0,
  @sj float = 0
as
begin
  if @status = 0
    delete from D1801DW where adw = @adw
  else
    update D1801DW
    set T = @t, TM = @tm, DW_ID = @dw_id, ABASE = @abase, CGJ = @cgj, PFJ = @pfj, VIPSJ = @vipsj, SJ = @sj
    where adw = @adw
end
go
