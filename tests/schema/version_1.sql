-- The script of version 1, as it was given out. Never changed: files made by it are still in use.
create table D1001 (
  hb_id nvarchar(2) not null primary key,
  hb_name nvarchar(10),
  pym nvarchar(10),
  hb_note nvarchar(20),
  hb_bw bit,
  hb_hl float
)
go
create table D1002 (
  addr_ID nvarchar(4) not null primary key,
  addr_NAME nvarchar(16),
  addr_GL nvarchar(10),
  addr_TEL nvarchar(15),
  addr_ADDR nvarchar(40),
  addr_NOTE nvarchar(100),
  OID nvarchar(4)
)
go
create table D1003 (
  dw_id nvarchar(2) not null primary key,
  dw_name nvarchar(6),
  pym nvarchar(6),
  dw_note nvarchar(30)
)
go
create table D1004 (
  CLASS_ID nvarchar(4) not null primary key,
  CLASS_NAME nvarchar(40),
  CLASS_NOTE nvarchar(100),
  OID nvarchar(4),
  PYM nvarchar(40)
)
go
create table D1007 (
  CK_ID nvarchar(4) not null primary key,
  CK_NAME nvarchar(16),
  PYM nvarchar(16),
  CK_GL nvarchar(10),
  CK_TEL nvarchar(15),
  CK_ADDR nvarchar(40),
  CK_NOTE nvarchar(100),
  OID nvarchar(4)
)
go
create table D1008 (
  BM_ID nvarchar(4) not null primary key,
  BM_NAME nvarchar(10),
  PYM nvarchar(10),
  BM_ZG nvarchar(8),
  BM_NOTE nvarchar(20),
  OID nvarchar(4)
)
go
create table D1010 (
  JY_ID nvarchar(2) not null primary key,
  JY_NAME nvarchar(50),
  PYM nvarchar(50),
  CLASSID smallint,
  YH_NUM nvarchar(25),
  YH_NAME nvarchar(50),
  KM_ID nvarchar(18),
  QCMONEY float
)
go
create table D1011 (
  SEND_ID nvarchar(2) not null primary key,
  SEND_NAME nvarchar(10),
  PYM nvarchar(10)
)
go
create table D1012 (
  FF_ID nvarchar(2) not null primary key,
  FF_NAME nvarchar(30),
  PYM nvarchar(30)
)
go
create table D1101 (
  YW_ID nvarchar(4) not null primary key,
  YW_NAME nvarchar(20),
  PYM nvarchar(20),
  BM_ID nvarchar(4),
  TEL nvarchar(40),
  FAX nvarchar(40),
  EMAIL nvarchar(40),
  ADDR nvarchar(60),
  TC float,
  BDATE datetime,
  EDATE datetime,
  T bit,
  NOTE nvarchar(100)
)
create index IX_D1101_BM_ID on D1101 (BM_ID)
go
create table D1102 (
  KH_GYS_ID nvarchar(10) not null primary key,
  KG_NAME nvarchar(40),
  PYM nvarchar(40),
  FULL_NAME nvarchar(40),
  GRADE nvarchar(2),
  ADDR_ID nvarchar(4),
  SEND_ID nvarchar(2),
  KM_IDA nvarchar(18),
  KM_IDB nvarchar(18),
  BDATE datetime,
  EDATE datetime,
  FZR nvarchar(20),
  TEL nvarchar(50),
  TEL1 nvarchar(50),
  FAX nvarchar(30),
  ADDR nvarchar(100),
  EMAIL nvarchar(100),
  NOTE nvarchar(100),
  WEB nvarchar(100)
)
go
create table D1103 (
  KH_GYS_ID nvarchar(10) not null primary key,
  KG_NAME nvarchar(40),
  PYM nvarchar(40),
  FULL_NAME nvarchar(40),
  GRADE nvarchar(2),
  ADDR_ID nvarchar(4),
  SEND_ID nvarchar(2),
  KM_IDA nvarchar(18),
  KM_IDB nvarchar(18),
  BDATE datetime,
  EDATE datetime,
  FZR nvarchar(20),
  TEL nvarchar(50),
  TEL1 nvarchar(50),
  FAX nvarchar(30),
  ADDR nvarchar(100),
  EMAIL nvarchar(100),
  NOTE nvarchar(100),
  WEB nvarchar(100)
)
go
create table D6801 (
  km_id nvarchar(18) not null primary key,
  km_name nvarchar(50)
)
go

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
create index IX_D1801DW_WL_ID on D1801DW (WL_ID, T)
create index IX_D1801DW_TM on D1801DW (TM)
create index IX_D1801DW_DW_ID on D1801DW (DW_ID)
go
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
create table D8202 (
  noid nvarchar(12) not null primary key,
  kh_gys_id nvarchar(10),
  ck_id nvarchar(4),
  bdate datetime,
  edate datetime,
  send_id nvarchar(2),
  user_id nvarchar(10),
  YW_ID nvarchar(4),
  JY_ID nvarchar(2),
  note nvarchar(100),
  t int,
  sk float,
  sdate datetime
)
go
create table D8202A (
  noid nvarchar(12),
  id int,
  wl_id nvarchar(20),
  ck_id nvarchar(4),
  sl float,
  dj float,
  money float,
  sl_return float,
  DW_J float,
  DW_L float,
  DW_ZH float,
  note nvarchar(100),
  d8201aid int,
  adw int,
  jdate datetime
)
create index IX_D8202A_noid on D8202A (noid)
create index IX_D8202A_wl_id on D8202A (wl_id)
create index IX_D8202A_adw on D8202A (adw)
go
create table D8301A (
  NOID nvarchar(12),
  WL_ID nvarchar(20),
  CK_ID nvarchar(4),
  adw int,
  SL float,
  MONEY float,
  KC float,
  SL1 float,
  SL2 float,
  SL3 float
)
create index IX_D8301A_NOID on D8301A (NOID)
create index IX_D8301A_WL_ID on D8301A (WL_ID)
go
create table D704A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D704A_WL_ID on D704A (WL_ID)
go
create table D712A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D712A_WL_ID on D712A (WL_ID)
go
create table D713A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D713A_WL_ID on D713A (WL_ID)
go
create table D8101A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8101A_WL_ID on D8101A (WL_ID)
go
create table D8102A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8102A_WL_ID on D8102A (WL_ID)
go
create table D8103A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8103A_WL_ID on D8103A (WL_ID)
go
create table D8201A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8201A_WL_ID on D8201A (WL_ID)
go
create table D8203A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8203A_WL_ID on D8203A (WL_ID)
go
create table D8300A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8300A_WL_ID on D8300A (WL_ID)
go
create table D8302A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8302A_WL_ID on D8302A (WL_ID)
go
create table D8303A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8303A_WL_ID on D8303A (WL_ID)
go
create table D8401A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8401A_WL_ID on D8401A (WL_ID)
go
create table D8402A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8402A_WL_ID on D8402A (WL_ID)
go
create table D8403A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8403A_WL_ID on D8403A (WL_ID)
go

create table SYS_USER (
  USER_ID nvarchar(10) not null primary key,
  USER_NAME nvarchar(20),
  T int
)
go
create table SYS_USER_CK (
  USER_ID nvarchar(10),
  CK_ID nvarchar(4),
  W int
)
create index IX_SYS_USER_CK_CK_ID on SYS_USER_CK (CK_ID, USER_ID)
go
create table SYS_PASSWORD (
  USER_ID nvarchar(10) not null primary key,
  HASH nvarchar(200) not null
)
go
create table SYS_RIGHT (
  USER_ID nvarchar(10) not null,
  MODULE nvarchar(10) not null,
  R_ADD bit not null default 0,
  R_EDIT bit not null default 0,
  R_DELETE bit not null default 0,
  R_PRINT bit not null default 0,
  R_EXPORT bit not null default 0,
  R_IMPORT bit not null default 0,
  primary key (USER_ID, MODULE)
)
go
create table SYS_NOID (
  MODULE nvarchar(10) not null,
  PREFIX nvarchar(20) not null,
  SERIAL_LENGTH int not null,
  LAST_NO bigint not null,
  primary key (MODULE, PREFIX, SERIAL_LENGTH)
)
go
create table SYS_AUDIT (
  AUDIT_ID int identity(1,1) not null primary key,
  AUDIT_TIME datetime not null,
  USER_ID nvarchar(10),
  MODULE nvarchar(10),
  KEY_VALUE nvarchar(100),
  OPERATION nvarchar(20),
  STATEMENT nvarchar(max)
)
create index IX_SYS_AUDIT_TIME on SYS_AUDIT (AUDIT_TIME)
go
create table SYS_SETTING (
  NAME nvarchar(50) not null primary key,
  VALUE nvarchar(400)
)
go
create table sys_co (
  id nvarchar(10),
  co nvarchar(50),
  mod_pict varbinary(max)
)
go
create table D1800 (
  K_ID nvarchar(20),
  WL_NAME nvarchar(80),
  DW_NAME nvarchar(10),
  PP nvarchar(20),
  PFJ float
)
create table FKW (
  COL_ID int,
  M_INDEX int,
  K_ID nvarchar(20),
  M float
)
go
create table SYS_VERSION (
  VERSION int not null
)
go
insert into SYS_USER (USER_ID, USER_NAME, T) values (N'ADMIN', N'系统管理员', 1)
insert into SYS_VERSION (VERSION) values (1)
go
